// The device's own lists, one screen each, reached by name (the title bar has no room for
// more tabs):
//   contacts  the phone book and call log (CZELTelList): a set of row pieces per kind of
//             entry (missed calls in rose), the chosen contact beside it, a double tap
//             calls;
//   devices   the Bluetooth devices (CZELBTList): the connected device marked with its
//             link icon; a double tap connects another, found again by its state;
//   files     the file browser (CBbgFileList) over a whole-screen paper, drag marking a
//             span with auto-scroll at the edges, a double tap on the current row opens;
//   table     a table (CZELListCtrl): a tap on a heading sorts by that column (the host
//             sorts and refills; the list only reports the tap).
#pragma once

#include <zelctl.h>

#include <CBbgFileList.h>
#include <CZELBTList.h>
#include <CZELListCtrl.h>
#include <CZELTelList.h>

#include <string>

#include "host/paint_kit.h"
#include "host/screens.h"

namespace zel::demo {

class ContactsScreen : public Screen {
public:
    static constexpr int kListId = 1501;
    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    HWND host_ = nullptr;
    CZELTelList list_;
    std::wstring calling_;
    Font titleFont_{22, FW_BOLD};
    Font textFont_{17};
};

class DevicesScreen : public Screen {
public:
    static constexpr int kListId = 1502;
    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    HWND host_ = nullptr;
    CZELBTList list_;
    Font titleFont_{22, FW_BOLD};
    Font textFont_{17};
};

class FilesScreen : public Screen {
public:
    static constexpr int kListId = 1503;
    static constexpr UINT_PTR kLookTimer = 1;
    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;
    void Timer(UINT_PTR id) override;
    void Pause() override;
    void Resume() override;

private:
    HWND host_ = nullptr;
    CBbgFileList list_;
    std::wstring opened_;
    Font titleFont_{22, FW_BOLD};
    Font textFont_{17};
};

class TableScreen : public Screen {
public:
    static constexpr int kListId = 1504;
    bool Build(HWND host, const SkinSource& skin) override;
    void Paint(HDC frame) override;
    bool AnnouncesChanges() const override { return true; }
    void Heard(UINT message, WPARAM wParam, LPARAM lParam) override;

private:
    void Fill();

    HWND host_ = nullptr;
    CZELListCtrl list_;
    int sortColumn_ = 0;
    Font titleFont_{22, FW_BOLD};
    Font textFont_{17};
};

}  // namespace zel::demo
