// Debug output: NKDbgPrintfW, OutputDebugStringW and the sink tests capture them with.
#include <cstdio>
#include <cstring>
#include <string>

#include "kernel/debug_format.h"
#include "kernel/utf.h"
#include "zel/debug.h"

namespace zel::kernel {

namespace {

DebugSink& Sink() {
    static DebugSink sink;
    return sink;
}

struct Spec {
    bool left = false, zero = false;
    int width = 0;
    int size = 0;  // 0 int, 64 for 64-bit
};

void Pad(std::wstring& out, const std::wstring& body, const Spec& s, bool numeric) {
    int fill = s.width - static_cast<int>(body.size());
    if (fill <= 0) {
        out += body;
    } else if (s.left) {
        out += body;
        out.append(fill, L' ');
    } else if (s.zero && numeric) {
        // Zero padding goes between the sign and the digits.
        size_t sign = (!body.empty() && body[0] == L'-') ? 1 : 0;
        out.append(body, 0, sign);
        out.append(fill, L'0');
        out.append(body, sign, std::wstring::npos);
    } else {
        out.append(fill, L' ');
        out += body;
    }
}

std::wstring Digits(unsigned long long v, unsigned base, bool upper) {
    const wchar_t* set = upper ? L"0123456789ABCDEF" : L"0123456789abcdef";
    std::wstring d;
    do {
        d.insert(d.begin(), set[v % base]);
        v /= base;
    } while (v);
    return d;
}

}  // namespace

std::wstring FormatDebug(const wchar_t* f, va_list ap) {
    std::wstring out;
    if (!f) return out;
    while (*f) {
        if (*f != L'%') {
            out += *f++;
            continue;
        }
        const wchar_t* start = f++;
        Spec s;
        for (;; ++f) {
            if (*f == L'-') s.left = true;
            else if (*f == L'0') s.zero = true;
            else break;
        }
        while (*f >= L'0' && *f <= L'9') s.width = s.width * 10 + (*f++ - L'0');
        if (*f == L'l' && f[1] == L'l') {
            s.size = 64;
            f += 2;
        } else if (*f == L'I' && f[1] == L'6' && f[2] == L'4') {
            s.size = 64;
            f += 3;
        } else if (*f == L'l' || *f == L'h') {
            ++f;
        }
        switch (*f) {
            case L'%':
                out += L'%';
                break;
            case L'd':
            case L'i': {
                long long v = s.size == 64 ? va_arg(ap, long long) : va_arg(ap, int);
                unsigned long long mag = v < 0 ? 0ull - static_cast<unsigned long long>(v) : v;
                Pad(out, (v < 0 ? L"-" : L"") + Digits(mag, 10, false), s, true);
                break;
            }
            case L'u':
            case L'x':
            case L'X': {
                unsigned long long v = s.size == 64 ? va_arg(ap, unsigned long long) : va_arg(ap, unsigned);
                Pad(out, Digits(v, *f == L'u' ? 10 : 16, *f == L'X'), s, true);
                break;
            }
            case L'c':
                Pad(out, std::wstring(1, static_cast<wchar_t>(va_arg(ap, int))), s, false);
                break;
            case L's': {
                const wchar_t* str = va_arg(ap, const wchar_t*);
                Pad(out, str ? str : L"(null)", s, false);
                break;
            }
            case L'S': {
                const char* str = va_arg(ap, const char*);
                std::wstring w;
                for (const char* p = str ? str : "(null)"; *p; ++p) w += static_cast<wchar_t>(static_cast<unsigned char>(*p));
                Pad(out, w, s, false);
                break;
            }
            case 0:
                out.append(start, f);
                return out;
            default:
                out.append(start, f + 1);
                break;
        }
        ++f;
    }
    return out;
}

// One debug line: stderr always, the sink when set. Trailing line breaks belong to the
// caller's format ("...\r\n" is the CE habit) and are not part of the line.
void EmitDebugLine(std::wstring line) {
    while (!line.empty() && (line.back() == L'\n' || line.back() == L'\r')) line.pop_back();
    std::string bytes = WideToUtf8(line);
    bytes.resize(std::strlen(bytes.c_str()));  // stderr shows the line up to a NUL in it
    bytes += '\n';
    std::fwrite(bytes.data(), 1, bytes.size(), stderr);  // one write, as the line it is
    if (Sink()) Sink()(line);
}

}  // namespace zel::kernel

namespace zel {
void SetDebugSink(DebugSink sink) { kernel::Sink() = std::move(sink); }
}  // namespace zel

extern "C" {

void NKDbgPrintfW(LPCWSTR format, ...) {
    va_list ap;
    va_start(ap, format);
    std::wstring line = zel::kernel::FormatDebug(format, ap);
    va_end(ap);
    zel::kernel::EmitDebugLine(std::move(line));
}

void OutputDebugStringW(LPCWSTR text) { zel::kernel::EmitDebugLine(text ? text : L""); }

}  // extern "C"
