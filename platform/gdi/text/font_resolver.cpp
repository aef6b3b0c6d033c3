// Face name substitution and fontconfig matching.
#include "gdi/text/font_resolver.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <sstream>
#include <utility>

#include "kernel/strings.h"
#include "kernel/utf.h"

namespace zel::text {

namespace {

using kernel::Lower;
using kernel::Trim;

std::wstring Widen(const std::string& ascii) { return std::wstring(ascii.begin(), ascii.end()); }

using SubstituteTable = std::map<std::string, std::string>;  // lower-case name -> family

const SubstituteTable& Substitutes() {
    static const SubstituteTable table = [] {
        SubstituteTable t = {
            {"tahoma", "Tahoma"},
            {"system", "Tahoma"},  // the device's system font
            {"ms sans serif", "Tahoma"},
            {"ms shell dlg", "Tahoma"},
            {"ms shell dlg 2", "Tahoma"},
            {"arial", "Liberation Sans"},
            {"times new roman", "Liberation Serif"},
            {"courier new", "Liberation Mono"},
        };
        if (const char* env = std::getenv("ZEL_FONT_SUBSTITUTES")) {
            std::stringstream list(env);
            std::string entry;
            while (std::getline(list, entry, ';')) {
                size_t eq = entry.find('=');
                if (eq == std::string::npos) continue;
                std::string from = Lower(Trim(entry.substr(0, eq))), to = Trim(entry.substr(eq + 1));
                if (!from.empty() && !to.empty()) t[from] = to;
            }
        }
        return t;
    }();
    return table;
}

// RAII for fontconfig patterns.
struct PatternPtr {
    FcPattern* p = nullptr;
    explicit PatternPtr(FcPattern* pattern) : p(pattern) {}
    PatternPtr(const PatternPtr&) = delete;
    PatternPtr& operator=(const PatternPtr&) = delete;
    ~PatternPtr() {
        if (p) FcPatternDestroy(p);
    }
};

bool HasFamily(FcPattern* match, const std::string& family) {
    std::string want = Lower(family);
    FcChar8* name = nullptr;
    for (int i = 0; FcPatternGetString(match, FC_FAMILY, i, &name) == FcResultMatch; ++i)
        if (Lower(reinterpret_cast<const char*>(name)) == want) return true;
    return false;
}

std::shared_ptr<FaceFile> FileOf(FcPattern* match) {
    FcChar8* file = nullptr;
    int index = 0;
    if (FcPatternGetString(match, FC_FILE, 0, &file) != FcResultMatch) return nullptr;
    FcPatternGetInteger(match, FC_INDEX, 0, &index);
    return OpenFace(reinterpret_cast<const char*>(file), index);
}

// Best scalable match for `family` at an OpenType weight and slant. With `exact`, a match
// of another family (fontconfig's own fallback) counts as no match.
std::shared_ptr<FaceFile> Match(const std::string& family, int weight, bool italic, bool exact,
                                const FcCharSet* mustHave = nullptr) {
    FcConfig* config = Config();
    if (!config) return nullptr;
    PatternPtr pattern(FcPatternCreate());
    FcPatternAddString(pattern.p, FC_FAMILY, reinterpret_cast<const FcChar8*>(family.c_str()));
    FcPatternAddInteger(pattern.p, FC_WEIGHT, static_cast<int>(FcWeightFromOpenTypeDouble(weight)));
    FcPatternAddInteger(pattern.p, FC_SLANT, italic ? FC_SLANT_ITALIC : FC_SLANT_ROMAN);
    FcPatternAddBool(pattern.p, FC_SCALABLE, FcTrue);
    if (mustHave) FcPatternAddCharSet(pattern.p, FC_CHARSET, mustHave);
    FcConfigSubstitute(config, pattern.p, FcMatchPattern);
    FcDefaultSubstitute(pattern.p);
    FcResult result = FcResultNoMatch;
    PatternPtr match(FcFontMatch(config, pattern.p, &result));
    if (!match.p) return nullptr;
    if (exact && !HasFamily(match.p, family)) return nullptr;
    if (mustHave) {
        FcCharSet* has = nullptr;
        if (FcPatternGetCharSet(match.p, FC_CHARSET, 0, &has) != FcResultMatch || !FcCharSetIsSubset(mustHave, has))
            return nullptr;
    }
    return FileOf(match.p);
}

// The generic family the pitch and family bits of a LOGFONTW ask for.
const char* GenericFamily(BYTE pitchAndFamily) {
    if ((pitchAndFamily & 0x03) == FIXED_PITCH || (pitchAndFamily & 0xF0) == FF_MODERN) return "monospace";
    if ((pitchAndFamily & 0xF0) == FF_ROMAN) return "serif";
    return "sans-serif";
}

bool HasFile(const FaceChoice& choice, const std::string& family) {
    return choice.file && Lower(choice.file->family) == Lower(family);
}

}  // namespace

std::string FaceNameUtf8(const LOGFONTW& lf) {
    size_t n = 0;
    while (n < LF_FACESIZE && lf.lfFaceName[n]) ++n;
    return kernel::WideToUtf8(std::wstring_view(lf.lfFaceName, n));
}

FaceChoice ResolveFace(const LOGFONTW& lf) {
    FaceChoice choice;
    int weight = lf.lfWeight <= 0 ? FW_NORMAL : std::min<LONG>(lf.lfWeight, 1000);
    bool italic = lf.lfItalic != 0;
    std::string requested = Trim(FaceNameUtf8(lf));
    std::string family = requested;
    if (auto it = Substitutes().find(Lower(requested)); it != Substitutes().end()) family = it->second;

    if (!family.empty()) choice.file = Match(family, weight, italic, /*exact=*/true);
    if (!choice.file) choice.file = Match(GenericFamily(lf.lfPitchAndFamily), weight, italic, false);
    if (!choice.file) return choice;

    // Bold needs a bold file, else the outlines are thickened; the same for italic.
    choice.embolden = weight >= FW_BOLD && choice.file->weight < 600;
    choice.oblique = italic && !choice.file->italic;
    // A name served by a substitute is reported as asked for (applications compare it);
    // otherwise the face's own family name, as for a missing face's replacement.
    bool substituted = !requested.empty() && Lower(family) != Lower(requested) && HasFile(choice, family);
    if (substituted) {
        for (int i = 0; i < LF_FACESIZE && lf.lfFaceName[i]; ++i) choice.faceName += lf.lfFaceName[i];
    } else {
        choice.faceName = Widen(choice.file->family);
    }
    return choice;
}

std::shared_ptr<FaceFile> FallbackFace(char32_t ch, bool bold) {
    static auto* cache = new std::map<std::pair<char32_t, bool>, std::shared_ptr<FaceFile>>();
    auto key = std::make_pair(ch, bold);
    if (auto it = cache->find(key); it != cache->end()) return it->second;
    FcCharSet* set = FcCharSetCreate();
    FcCharSetAddChar(set, static_cast<FcChar32>(ch));
    std::shared_ptr<FaceFile> file = Match("sans-serif", bold ? FW_BOLD : FW_NORMAL, false, false, set);
    FcCharSetDestroy(set);
    // The match must really map the character (a charset can over-promise for a face index).
    if (file && FT_Get_Char_Index(file->face, ch) == 0) file = nullptr;
    (*cache)[key] = file;
    return file;
}

}  // namespace zel::text
