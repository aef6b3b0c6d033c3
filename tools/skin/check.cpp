#include "check.h"

#include <map>
#include <set>

#include "family.h"
#include "gdi/image_codec.h"
#include "kernel/file.h"

namespace zel::skintool {

namespace {

constexpr size_t kMaxImageBytes = size_t{512} << 20;  // SHLoadDIBitmap's own cap

struct Picture {
    bool present = false;   // the file could be read
    std::string readError;  // why not
    detail::DecodedImage image;
};

std::string Rgb(COLORREF c) {
    char text[16];
    std::snprintf(text, sizeof text, "%02X%02X%02X", GetRValue(c), GetGValue(c), GetBValue(c));
    return text;
}

std::string SizeText(const gdi::PixelBuffer& p) { return std::to_string(p.width) + " x " + std::to_string(p.height); }

uint32_t PixelOf(COLORREF c) { return (uint32_t(GetRValue(c)) << 16) | (uint32_t(GetGValue(c)) << 8) | GetBValue(c); }

class Checker {
public:
    explicit Checker(const SkinSource& skin) : skin_(skin) {}

    std::vector<Finding> Run() {
        for (const ControlEntry& entry : skin_.controls) CheckControl(entry);
        ReportUnused();
        return std::move(findings_);
    }

private:
    const Picture& Load(const std::string& path) {
        auto [it, fresh] = pictures_.try_emplace(path);
        if (fresh) {
            std::optional<std::string> bytes = kernel::ReadWholeFile(path, kMaxImageBytes, &it->second.readError);
            if (bytes) {
                it->second.present = true;
                it->second.image = detail::DecodeImage(reinterpret_cast<const uint8_t*>(bytes->data()), bytes->size());
            }
        }
        return it->second;
    }

    void Add(const std::string& path, const std::string& control, const std::string& problem) {
        findings_.push_back({path, control, problem});
    }

    void CheckControl(const ControlEntry& entry) {
        const std::string where = skin_.manifestPath + ":" + std::to_string(entry.line);
        const Family* family = FindFamily(entry.className);
        if (!family) {
            Add(where, entry.Label(), "unknown control class");
            return;
        }
        if (entry.pieces.size() > family->pieces.size() && !family->extraPieces)
            Add(where, entry.Label(),
                std::to_string(entry.pieces.size()) + " pieces, the class takes " +
                    std::to_string(family->pieces.size()));
        std::vector<const gdi::PixelBuffer*> images(entry.pieces.size(), nullptr);
        for (size_t i = 0; i < entry.pieces.size(); ++i) {
            const PieceRef& piece = entry.pieces[i];
            const std::string role = RoleName(*family, i);
            if (piece.token == "-") continue;
            if (!piece.resolved) {
                Add(where, entry.Label(), role + ": " + piece.token + " is not in the skin");
                continue;
            }
            used_.insert(piece.path);
            const Picture& picture = Load(piece.path);
            if (!picture.present)
                Add(piece.path, entry.Label(), role + ": missing file (" + picture.readError + ")");
            else if (!picture.image.ok())
                Add(piece.path, entry.Label(), role + ": does not decode: " + picture.image.error);
            else
                images[i] = &picture.image.pixels;
        }
        for (const SizeRule& rule : family->rules) CheckRule(entry, *family, rule, images);
    }

    static std::string RoleName(const Family& family, size_t i) {
        if (i < family.pieces.size()) return family.pieces[i];
        return std::string(family.extraPieces ? family.extraPieces : "piece") + " " +
               std::to_string(i - family.pieces.size() + 1);
    }

    void CheckRule(const ControlEntry& entry, const Family& family, const SizeRule& rule,
                   const std::vector<const gdi::PixelBuffer*>& images) {
        auto image = [&](int i) -> const gdi::PixelBuffer* { return size_t(i) < images.size() ? images[i] : nullptr; };
        auto path = [&](int i) { return entry.pieces[i].path; };
        auto role = [&](int i) { return RoleName(family, i); };
        const gdi::PixelBuffer* first = nullptr;
        int firstIndex = -1;
        for (int i : rule.pieces)
            if (image(i)) {
                first = image(i);
                firstIndex = i;
                break;
            }
        if (!first) return;
        switch (rule.kind) {
            case RuleKind::SameSize:
            case RuleKind::SameHeight:
            case RuleKind::SameWidth:
                for (int i : rule.pieces) {
                    const gdi::PixelBuffer* p = image(i);
                    if (!p || p == first || i == firstIndex) continue;
                    const bool width = rule.kind != RuleKind::SameHeight && p->width != first->width;
                    const bool height = rule.kind != RuleKind::SameWidth && p->height != first->height;
                    if (rule.kind == RuleKind::SameSize && (width || height))
                        Add(path(i), entry.Label(),
                            role(i) + " is " + SizeText(*p) + ", " + role(firstIndex) + " is " + SizeText(*first));
                    else if (rule.kind == RuleKind::SameHeight && height)
                        Add(path(i), entry.Label(),
                            role(i) + " is " + std::to_string(p->height) + " high, " + role(firstIndex) + " is " +
                                std::to_string(first->height) + " high");
                    else if (rule.kind == RuleKind::SameWidth && width)
                        Add(path(i), entry.Label(),
                            role(i) + " is " + std::to_string(p->width) + " wide, " + role(firstIndex) + " is " +
                                std::to_string(first->width) + " wide");
                }
                break;
            case RuleKind::Exact:
                if (first->width != rule.width || first->height != rule.height)
                    Add(path(firstIndex), entry.Label(),
                        role(firstIndex) + " is " + SizeText(*first) + ", expected " + std::to_string(rule.width) +
                            " x " + std::to_string(rule.height));
                break;
            case RuleKind::NoWider:
                if (rule.pieces.size() == 2 && firstIndex == rule.pieces[0] && image(rule.pieces[1]) &&
                    first->width > image(rule.pieces[1])->width)
                    Add(path(firstIndex), entry.Label(),
                        role(firstIndex) + " is " + std::to_string(first->width) + " wide, wider than the " +
                            role(rule.pieces[1]) + " (" + std::to_string(image(rule.pieces[1])->width) + ")");
                break;
            case RuleKind::KeyColour:
                for (int i : rule.pieces)
                    if (const gdi::PixelBuffer* p = image(i); p && !HasPixel(*p, PixelOf(rule.key)))
                        Add(path(i), entry.Label(), role(i) + " has no key colour pixel (" + Rgb(rule.key) + ")");
                break;
            case RuleKind::KeyCorners:
                for (int i : rule.pieces)
                    if (const gdi::PixelBuffer* p = image(i); p && !CornersKeyed(*p))
                        Add(path(i), entry.Label(),
                            role(i) + " has no key colour: its corners differ from its top-left pixel");
                break;
        }
    }

    static bool HasPixel(const gdi::PixelBuffer& p, uint32_t value) {
        for (uint32_t px : p.pixels)
            if ((px & 0xFFFFFF) == value) return true;
        return false;
    }

    // A picture shaped by its top-left colour shows that colour in every corner; a picture
    // without a key background becomes a ragged rectangle instead.
    static bool CornersKeyed(const gdi::PixelBuffer& p) {
        if (p.width < 2 || p.height < 2) return false;
        const uint32_t key = p.row(0)[0] & 0xFFFFFF;
        return (p.row(0)[p.width - 1] & 0xFFFFFF) == key && (p.row(p.height - 1)[0] & 0xFFFFFF) == key &&
               (p.row(p.height - 1)[p.width - 1] & 0xFFFFFF) == key;
    }

    // Files the script names or the skin's folder holds that no control wears.
    void ReportUnused() {
        std::set<std::string> candidates;
        for (const auto& [file, name] : skin_.resourceOfFile) candidates.insert(file);
        for (const std::string& file : ImageFilesUnder(skin_.folder)) candidates.insert(file);
        for (const std::string& file : candidates) {
            if (used_.count(file)) continue;
            auto name = skin_.resourceOfFile.find(file);
            Add(file, name != skin_.resourceOfFile.end() ? name->second : "skin", "unused file");
        }
    }

    const SkinSource& skin_;
    std::map<std::string, Picture> pictures_;
    std::set<std::string> used_;
    std::vector<Finding> findings_;
};

}  // namespace

std::vector<Finding> CheckSkin(const SkinSource& skin) { return Checker(skin).Run(); }

}  // namespace zel::skintool
