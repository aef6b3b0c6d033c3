#include "skin/catalogue.h"

#include <cctype>

#include "skin/pieces.h"
#include "skin/theme.h"

namespace zel::demo {

const std::vector<SkinPiece>& DefaultSkin() {
    static const std::vector<SkinPiece> pieces = [] {
        std::vector<SkinPiece> all;
        AddScreenPieces(all);
        AddButtonPieces(all);
        AddBarPieces(all);
        AddClockPieces(all);
        AddPhonePieces(all);
        AddComboPieces(all);
        AddListPieces(all);  // last: earlier pieces keep their identifiers
        AddSpecialListPieces(all);  // after them, for the same reason
        return all;
    }();
    return pieces;
}

Canvas RenderPiece(const SkinPiece& piece) {
    Canvas large(piece.width * kSupersample, piece.height * kSupersample);
    Painter art(large, kSupersample);
    art.Fill(Box{0, 0, double(piece.width), double(piece.height)}, theme::kScreen);
    piece.draw(art);
    Canvas result = large.Reduced(kSupersample);
    if (!piece.silhouette || !result.ok()) return result;

    Canvas shape(piece.width * kSupersample, piece.height * kSupersample);
    Painter outline(shape, kSupersample, true);
    piece.silhouette(outline);
    std::vector<COLORREF> coverage = shape.Reduced(kSupersample).Colors();
    // Under half covered is outside. The art already faded its edge pixels into the screen
    // colour, so the outline shows no key-coloured fringe where it is drawn transparently.
    for (int y = 0; y < result.height(); ++y)
        for (int x = 0; x < result.width(); ++x)
            if (GetRValue(coverage[static_cast<size_t>(y) * result.width() + x]) < 128)
                result.SetPixelColor(x, y, theme::kKey);
    return result;
}

std::string ResourceName(const std::string& pieceName) {
    std::string id = "IDB_";
    for (char c : pieceName) id += static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    return id;
}

}  // namespace zel::demo
