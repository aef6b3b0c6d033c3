#include "skin_source.h"

#include <algorithm>
#include <filesystem>
#include <sstream>

#include "kernel/file.h"
#include "kernel/resource_script.h"
#include "kernel/strings.h"

namespace zel::skintool {

namespace fs = std::filesystem;

namespace {

constexpr size_t kMaxTextBytes = 16u << 20;  // the resource reader's own cap on a script
constexpr int kMaxFolderDepth = 8;
constexpr size_t kMaxFolderFiles = 100000;

std::string Normal(const fs::path& p) { return p.lexically_normal().generic_string(); }

bool IsImageName(const fs::path& p) {
    std::string ext = kernel::Lower(p.extension().string());
    return ext == ".bmp" || ext == ".png";
}

// "#define NAME 123" lines of the script and of the headers it includes by a quoted
// name: what ties a resource name in the control list to the numeric identifier the
// script's BITMAP line was stored under. The script reader itself has checked the syntax.
std::map<std::string, long> NumericDefines(const fs::path& script) {
    std::map<std::string, long> defines;
    std::vector<fs::path> files{script};
    for (size_t i = 0; i < files.size() && i < 64; ++i) {
        std::optional<std::string> text = kernel::ReadWholeFile(files[i].string(), kMaxTextBytes);
        if (!text) continue;
        std::istringstream lines(*text);
        std::string line;
        while (std::getline(lines, line)) {
            std::istringstream words(kernel::Trim(line));
            std::string directive, name, value;
            words >> directive >> name >> value;
            if (directive == "#include" && name.size() > 2 && name.front() == '"' && name.back() == '"')
                files.push_back(files[i].parent_path() / name.substr(1, name.size() - 2));
            if (directive != "#define" || value.empty()) continue;
            char* end = nullptr;
            long number = std::strtol(value.c_str(), &end, 0);
            if (end && *end == '\0') defines[name] = number;
        }
    }
    return defines;
}

std::vector<std::string> Words(const std::string& line) {
    std::istringstream in(line);
    std::vector<std::string> words;
    for (std::string w; in >> w;) words.push_back(w);
    return words;
}

// Pieces named by resource: by the script's own names first, then through a #define.
struct Resolver {
    const detail::ResourceScript* script = nullptr;
    std::map<std::string, long> defines;
    fs::path folder;

    std::optional<std::string> Resolve(const std::string& token, unsigned* id) const {
        if (script) {
            std::wstring wide(token.begin(), token.end());
            for (wchar_t& c : wide) c = static_cast<wchar_t>(std::towupper(c));
            if (auto it = script->bitmapsByName.find(wide); it != script->bitmapsByName.end())
                return Normal(it->second);
            if (auto d = defines.find(token); d != defines.end()) {
                auto it = script->bitmapsById.find(static_cast<unsigned>(d->second) & 0xFFFFu);
                if (it == script->bitmapsById.end()) return std::nullopt;
                *id = it->first;
                return Normal(it->second);
            }
        }
        // A name without a dot or separator is a resource name the script lacks.
        if (token.find_first_of("./") == std::string::npos) return std::nullopt;
        return Normal(folder / token);
    }
};

bool ReadManifest(const std::string& path, const Resolver& resolver, SkinSource& skin, std::string* error) {
    std::string why;
    std::optional<std::string> text = kernel::ReadWholeFile(path, kMaxTextBytes, &why);
    if (!text) {
        *error = path + ": skin: no control list (" + why + ")";
        return false;
    }
    std::istringstream lines(*text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number) {
        if (size_t hash = line.find('#'); hash != std::string::npos) line.resize(hash);
        std::vector<std::string> words = Words(line);
        if (words.empty()) continue;
        if (words.size() < 3) {
            *error = path + ":" + std::to_string(number) + ": expected CLASS NAME PIECE...";
            return false;
        }
        ControlEntry entry{words[0], words[1], number, {}};
        for (size_t i = 2; i < words.size(); ++i) {
            PieceRef piece{words[i], {}, false};
            if (piece.token != "-") {
                if (std::optional<std::string> file = resolver.Resolve(piece.token, &piece.id)) {
                    piece.path = *file;
                    piece.resolved = true;
                }
            }
            entry.pieces.push_back(piece);
        }
        skin.controls.push_back(std::move(entry));
    }
    return true;
}

}  // namespace

std::vector<std::string> ImageFilesUnder(const std::string& folder) {
    std::vector<std::string> files;
    std::error_code ec;
    fs::recursive_directory_iterator it(folder, fs::directory_options::skip_permission_denied, ec), end;
    for (; !ec && it != end && files.size() < kMaxFolderFiles; it.increment(ec)) {
        if (it.depth() >= kMaxFolderDepth) it.disable_recursion_pending();
        std::error_code typeError;
        if (it->is_regular_file(typeError) && IsImageName(it->path())) files.push_back(Normal(it->path()));
    }
    std::sort(files.begin(), files.end());
    return files;
}

std::optional<SkinSource> LoadSkinSource(const std::string& skinArg, std::string* error) {
    SkinSource skin;
    fs::path arg(skinArg);
    std::error_code ec;
    fs::path script;
    if (fs::is_directory(arg, ec)) {
        std::vector<fs::path> scripts;
        for (const fs::directory_entry& e : fs::directory_iterator(arg, ec))
            if (kernel::Lower(e.path().extension().string()) == ".rc") scripts.push_back(e.path());
        if (scripts.size() > 1) {
            *error = skinArg + ": skin: more than one resource script; name the one to check";
            return std::nullopt;
        }
        if (scripts.size() == 1)
            script = scripts.front();
        else
            skin.manifestPath = Normal(arg / "skin.controls");
        skin.folder = Normal(arg);
    } else {
        script = arg;
    }

    Resolver resolver;
    std::optional<detail::ResourceScript> parsed;
    if (!script.empty()) {
        std::string why;
        parsed = detail::ParseResourceScript(script.string(), &why);
        if (!parsed) {
            *error = why;
            return std::nullopt;
        }
        skin.scriptPath = Normal(script);
        skin.folder = Normal(script.parent_path().empty() ? fs::path(".") : script.parent_path());
        skin.manifestPath = Normal(fs::path(script).replace_extension(".controls"));
        resolver.script = &*parsed;
        resolver.defines = NumericDefines(script);
        std::map<long, std::string> nameOfId;
        for (const auto& [name, value] : resolver.defines) nameOfId.emplace(value & 0xFFFF, name);
        for (const auto& [id, file] : parsed->bitmapsById) {
            auto name = nameOfId.find(static_cast<long>(id));
            skin.resourceOfFile[Normal(file)] = name != nameOfId.end() ? name->second : std::to_string(id);
        }
        for (const auto& [name, file] : parsed->bitmapsByName)
            skin.resourceOfFile[Normal(file)] = std::string(name.begin(), name.end());
    }
    resolver.folder = fs::path(skin.manifestPath).parent_path();
    if (!ReadManifest(skin.manifestPath, resolver, skin, error)) return std::nullopt;
    return skin;
}

}  // namespace zel::skintool
