#include "SkinSet.h"

#include "OffscreenCanvas.h"
#include "SkinList.h"

namespace zelctl {

SIZE SkinSet::Size(size_t i) const { return BitmapSize((*this)[i]); }

void SkinSet::Set(size_t i, HBITMAP bitmap) {
    if (i >= pieces_.size()) {
        if (bitmap) ::DeleteObject(bitmap);
        return;
    }
    if (pieces_[i] && pieces_[i] != bitmap) ::DeleteObject(pieces_[i]);
    pieces_[i] = bitmap;
}

void SkinSet::ReleaseAll() {
    for (size_t i = 0; i < pieces_.size(); ++i) Release(i);
}

HBITMAP SkinSet::Detach(size_t i) {
    if (i >= pieces_.size()) return nullptr;
    HBITMAP bitmap = pieces_[i];
    pieces_[i] = nullptr;
    return bitmap;
}

void SkinSet::LoadFiles(std::initializer_list<CString> paths, size_t first) {
    for (const CString& path : paths) Set(first++, LoadSkinFile(path));
}

void SkinSet::LoadIds(std::initializer_list<UINT> ids, HINSTANCE instance, size_t first) {
    for (UINT id : ids) Set(first++, LoadSkinBitmap(id, instance));
}

void SkinSet::LoadIds(const UINT* ids, size_t count, HINSTANCE instance, size_t first) {
    for (size_t i = 0; i < count; ++i) Set(first + i, ids ? LoadSkinBitmap(ids[i], instance) : nullptr);
}

int SkinSet::LoadSkinString(const CString& skin, MissingPiece missing) {
    CStringArray pieces;
    SplitSkinList(skin, pieces);
    const int named = static_cast<int>(pieces.GetSize());
    if (named == 0) return 0;
    for (size_t i = 0; i < pieces_.size(); ++i) {
        if (i < static_cast<size_t>(named))
            Set(i, LoadSkinFile(pieces[static_cast<INT_PTR>(i)]));
        else
            Set(i, missing == MissingPiece::RepeatFirst ? LoadSkinFile(pieces[0]) : nullptr);
    }
    return named;
}

}  // namespace zelctl
