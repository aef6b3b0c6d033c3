// A recording window class for message-sequence tests: windows get names, and the
// messages a test asks for are logged as "name:MESSAGE(args)".
#pragma once

#include <windows.h>

#include <functional>
#include <initializer_list>
#include <string>
#include <vector>

#include "support/leak_check.h"

namespace zel::test {

class Recorder {
public:
    static Recorder& Get();

    // Starts a case: only `messages` are logged, hooks and return values are the defaults.
    // Windows keep their names until Forget (each test's start and end).
    void Start(std::initializer_list<UINT> messages);
    void Forget() { names_.clear(); }
    // Everything logged since the last call, joined by ';' ("-" when nothing).
    std::string Take();
    void Note(const std::string& entry) { log_.push_back(entry); }

    // A top-level popup of the recording class, and a child of any class (the recording one
    // when cls is null). Messages sent during creation are already logged under `name`.
    HWND Top(const char* name, int x, int y, int w, int h, DWORD extra = WS_VISIBLE);
    HWND Child(HWND parent, const char* name, int x, int y, int w, int h, int id, DWORD extra = WS_VISIBLE,
               const wchar_t* cls = nullptr, const wchar_t* text = L"");
    void Name(HWND hwnd, const char* name);
    std::string NameOf(HWND hwnd) const;

    // Runs before the default handling; return true (and set *result) to consume.
    std::function<bool(HWND, UINT, WPARAM, LPARAM, LRESULT*)> hook;
    LRESULT eraseResult = 1;

    static const wchar_t* ClassName() { return L"ZelRecorder"; }

private:
    Recorder();
    static LRESULT CALLBACK Proc(HWND, UINT, WPARAM, LPARAM);
    std::string Describe(HWND, UINT, WPARAM, LPARAM) const;

    std::vector<UINT> recorded_;
    std::vector<std::string> log_;
    std::vector<std::pair<HWND, std::string>> names_;
    std::string pending_;
};

// Every USER test starts from a reset desktop (virtual clock) and must release every GDI
// object it created.
class DesktopTest : public LeakChecked {
protected:
    void SetUp() override;
    void TearDown() override;
    Recorder& rec = Recorder::Get();
};

}  // namespace zel::test
