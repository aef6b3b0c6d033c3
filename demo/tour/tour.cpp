#include "tour/tour.h"

#include <sys/stat.h>

#include <cerrno>
#include <charconv>
#include <cstring>
#include <fstream>
#include <sstream>

#include "tour/keys.h"

namespace zel::demo {

namespace {

using Kind = TourStep::Kind;

struct Command {
    std::string_view word;
    Kind kind;
    const char* usage;
};

constexpr Command kCommands[] = {
    {"screen", Kind::kScreen, "screen NAME"}, {"tap", Kind::kTap, "tap X Y"},
    {"down", Kind::kDown, "down X Y"},        {"move", Kind::kMove, "move X Y"},
    {"up", Kind::kUp, "up X Y"},              {"drag", Kind::kDrag, "drag X1 Y1 X2 Y2 [STEPS]"},
    {"key", Kind::kKey, "key VK_NAME|NUMBER"}, {"wait", Kind::kWait, "wait MS"},
    {"shot", Kind::kShot, "shot NAME"},
};

// Pointer coordinates travel in the two 16-bit halves of an lParam.
constexpr long long kMinCoordinate = -32768, kMaxCoordinate = 32767;
// Longer waits are almost certainly a typo, and in virtual time a repeating timer would
// fire for every period of it.
constexpr long long kMaxWaitMs = 600000;
constexpr long long kMaxDragSteps = 1000;

struct Failure {
    std::string message;
    int line = 0;  // when not the line being read
};

// A number as written, bounded as Quoted bounds tokens (leading zeros can make it long).
std::string Unquoted(std::string_view word) {
    std::string q = Quoted(word);
    return q.substr(1, q.size() - 2);
}

// Words of a line up to a word that starts a comment.
std::vector<std::string_view> Words(std::string_view line) {
    std::vector<std::string_view> words;
    size_t i = 0;
    while (i < line.size()) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) ++i;
        if (i == line.size() || line[i] == '#') break;
        size_t start = i;
        while (i < line.size() && line[i] != ' ' && line[i] != '\t') ++i;
        words.push_back(line.substr(start, i - start));
    }
    return words;
}

// Decimal with an optional sign, or 0x hexadecimal.
std::optional<long long> Integer(std::string_view word) {
    int base = 10;
    std::string_view digits = word;
    if (digits.size() > 2 && digits[0] == '0' && (digits[1] == 'x' || digits[1] == 'X')) {
        base = 16;
        digits.remove_prefix(2);
    } else if (!digits.empty() && digits[0] == '+') {
        digits.remove_prefix(1);
        if (!digits.empty() && digits[0] == '-') return std::nullopt;
    }
    long long value = 0;
    auto [end, ec] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (ec != std::errc() || end != digits.data() + digits.size() || digits.empty()) return std::nullopt;
    return value;
}

long long Number(std::string_view word, long long min, long long max, const char* what) {
    std::optional<long long> v = Integer(word);
    if (!v) throw Failure{Quoted(word) + " is not a whole number"};
    if (*v < min || *v > max)
        throw Failure{std::string(what) + " " + Unquoted(word) + " is out of range (" + std::to_string(min) +
                      ".." + std::to_string(max) + ")"};
    return *v;
}

int Coordinate(std::string_view word) {
    return static_cast<int>(Number(word, kMinCoordinate, kMaxCoordinate, "coordinate"));
}

// Names become parts of file names.
std::string Name(std::string_view word, const char* what) {
    for (char c : word) {
        bool ok = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_';
        if (!ok) throw Failure{std::string(what) + " name " + Quoted(word) + " may only use letters, digits, '-' and '_'"};
    }
    return std::string(word);
}

// A word that starts with a letter is a key name, anything else a number.
UINT Key(std::string_view word) {
    if ((word[0] >= 'A' && word[0] <= 'Z') || (word[0] >= 'a' && word[0] <= 'z')) {
        std::optional<UINT> vk = VirtualKeyFromName(word);
        if (!vk) throw Failure{"unknown key " + Quoted(word)};
        return *vk;
    }
    return static_cast<UINT>(Number(word, 1, 254, "key"));
}

class Parser {
public:
    explicit Parser(std::string file) { tour_.file = std::move(file); }

    void Line(int number, std::string_view text) {
        std::vector<std::string_view> words = Words(text);
        if (words.empty()) return;
        const Command* command = Find(words[0]);
        if (!command) throw Failure{"unknown command " + Quoted(words[0])};
        TourStep step;
        step.kind = command->kind;
        step.line = number;
        Arguments(*command, words, step);
        Track(*command, step);
        tour_.steps.push_back(std::move(step));
    }

    Tour Finish() {
        if (stylusDown_) throw Failure{"the stylus is never lifted after this 'down'", downLine_};
        return std::move(tour_);
    }

private:
    static const Command* Find(std::string_view word) {
        for (const Command& c : kCommands)
            if (c.word == word) return &c;
        return nullptr;
    }

    static void Expect(const Command& command, const std::vector<std::string_view>& words, size_t min, size_t max) {
        size_t given = words.size() - 1;
        if (given < min || given > max) throw Failure{std::string("usage: ") + command.usage};
    }

    static void Arguments(const Command& command, const std::vector<std::string_view>& w, TourStep& step) {
        switch (command.kind) {
            case Kind::kScreen:
            case Kind::kShot:
                Expect(command, w, 1, 1);
                step.name = Name(w[1], command.kind == Kind::kScreen ? "screen" : "shot");
                break;
            case Kind::kTap:
            case Kind::kDown:
            case Kind::kMove:
            case Kind::kUp:
                Expect(command, w, 2, 2);
                step.x = Coordinate(w[1]);
                step.y = Coordinate(w[2]);
                break;
            case Kind::kDrag:
                Expect(command, w, 4, 5);
                step.x = Coordinate(w[1]);
                step.y = Coordinate(w[2]);
                step.x2 = Coordinate(w[3]);
                step.y2 = Coordinate(w[4]);
                step.steps = w.size() > 5 ? static_cast<int>(Number(w[5], 1, kMaxDragSteps, "step count"))
                                          : kDefaultDragSteps;
                break;
            case Kind::kKey:
                Expect(command, w, 1, 1);
                step.vk = Key(w[1]);
                break;
            case Kind::kWait:
                Expect(command, w, 1, 1);
                step.ms = static_cast<DWORD>(Number(w[1], 0, kMaxWaitMs, "wait"));
                break;
        }
    }

    // The stylus must go down before it moves or lifts, and a screen needs to be shown
    // before a shot can be named after it.
    void Track(const Command& command, const TourStep& step) {
        const std::string word(command.word);
        switch (step.kind) {
            case Kind::kScreen:
            case Kind::kTap:
            case Kind::kDrag:
            case Kind::kDown:
                if (stylusDown_)
                    throw Failure{Quoted(word) + " while the stylus is down (since line " + std::to_string(downLine_) +
                                  ")"};
                if (step.kind == Kind::kScreen) haveScreen_ = true;
                if (step.kind == Kind::kDown) {
                    stylusDown_ = true;
                    downLine_ = step.line;
                }
                break;
            case Kind::kMove:
            case Kind::kUp:
                if (!stylusDown_) throw Failure{Quoted(word) + " while the stylus is up"};
                if (step.kind == Kind::kUp) stylusDown_ = false;
                break;
            case Kind::kShot:
                if (!haveScreen_) throw Failure{"shot before any screen"};
                break;
            case Kind::kKey:
            case Kind::kWait:
                break;
        }
    }

    Tour tour_;
    bool haveScreen_ = false;
    bool stylusDown_ = false;
    int downLine_ = 0;
};

}  // namespace

std::optional<Tour> ParseTour(std::string_view text, const std::string& file, std::string* error) {
    if (text.substr(0, 3) == "\xEF\xBB\xBF") text.remove_prefix(3);
    Parser parser(file);
    int number = 0;
    try {
        while (!text.empty()) {
            ++number;
            size_t end = text.find('\n');
            std::string_view line = text.substr(0, end);
            if (!line.empty() && line.back() == '\r') line.remove_suffix(1);
            parser.Line(number, line);
            text.remove_prefix(end == std::string_view::npos ? text.size() : end + 1);
        }
        return parser.Finish();
    } catch (const Failure& f) {
        if (error) *error = file + ":" + std::to_string(f.line ? f.line : number) + ": " + f.message;
        return std::nullopt;
    }
}

std::string Quoted(std::string_view token) {
    bool cut = token.size() > kMaxQuoted;
    std::string q = "'";
    for (char c : token.substr(0, cut ? kMaxQuoted - 3 : token.size()))
        q += c >= 0x20 && c < 0x7F ? c : '?';
    return q + (cut ? "...'" : "'");
}

std::optional<Tour> LoadTour(const std::string& path, std::string* error) {
    auto fail = [&](const std::string& why) {
        if (error) *error = path + ": " + why;
        return std::nullopt;
    };
    // Checked before opening: opening a FIFO would wait for a writer.
    struct stat st {};
    if (stat(path.c_str(), &st) != 0) return fail("cannot open the tour");
    if (S_ISDIR(st.st_mode)) return fail("is a directory, not a tour");
    if (!S_ISREG(st.st_mode)) return fail("is not a regular file");
    if (static_cast<uint64_t>(st.st_size) > kMaxTourBytes)
        return fail("is larger than " + std::to_string(kMaxTourBytes >> 20) + " MiB, too large for a tour");
    std::ifstream in(path, std::ios::binary);
    if (!in) return fail(std::string("cannot open the tour (") + std::strerror(errno) + ")");
    std::ostringstream text;
    text << in.rdbuf();
    if (in.bad()) return fail("cannot read the tour");
    return ParseTour(text.str(), path, error);
}

}  // namespace zel::demo
