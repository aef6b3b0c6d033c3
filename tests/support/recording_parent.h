// The host window every control test puts its control in. It logs what the control tells
// its parent in one grammar, entries joined by ';' ("-" when nothing arrived):
//
//   COMMAND(id,code,sender)            WM_COMMAND
//   NOTIFY(idFrom,code,sender)         WM_NOTIFY: the NMHDR; code is NM_CLICK, NM_DBLCLK,
//                                      ... or a number; ",wParam=N" is added when wParam
//                                      differs from idFrom
//   VSCROLL(SB_code,pos,sender)        WM_VSCROLL / WM_HSCROLL (HSCROLL)
//   LBUTTONDOWN(flags,x,y)             pointer messages that reach the parent (forwarded by
//   LBUTTONUP(flags,x,y)               a control, or taps outside every child)
//
// Senders are the names given with Name() ("0" for a null handle, "?" for an unnamed one),
// resolved when the message arrives. With `timed` set each entry ends in "@ms", its arrival
// on the clock; Times() gives the arrival times of one message without the text.
//
// A new family's test gets one from ControlTest (control_test.h) as `parent`, creates its
// control with `&parent` as the parent window, calls parent.Name(ctl.m_hWnd, "ctl") and
// compares parent.Take() with the expected sequence. onMessage runs after an entry is
// logged and before the message is handled: set it to destroy the control from inside its
// own notification. Messages are then handled as any CWnd handles them (owner-draw
// WM_DRAWITEM and the rest reflected to the child).
#pragma once

#include <afxwin.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace zel::test {

class RecordingParent : public CWnd {
public:
    // A visible top-level popup at `place` (screen coordinates), named "parent".
    BOOL CreateAt(const CRect& place);
    void Name(HWND hwnd, std::string name);
    std::string NameOf(HWND hwnd) const;

    // The log since the last call, then cleared.
    std::string Take();
    // Arrival times (GetTickCount) of the entries of `message` since the last Take.
    std::vector<DWORD> Times(UINT message) const;

    bool timed = false;
    std::function<void(UINT message, WPARAM wParam, LPARAM lParam)> onMessage;

protected:
    LRESULT WindowProc(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    struct Entry {
        UINT message;
        std::string text;
        DWORD time;
    };
    std::string Describe(UINT message, WPARAM wParam, LPARAM lParam) const;

    std::vector<Entry> entries_;
    std::vector<std::pair<HWND, std::string>> names_;
};

// The timed log of an auto-repeat: `entry` `count` times, the first at `first` ms and then
// every `period` ms ("E@0;E@100;E@200").
std::string Repeats(const std::string& entry, DWORD first, DWORD period, int count);

}  // namespace zel::test
