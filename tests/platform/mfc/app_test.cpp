// CWinApp and the Afx functions: the application object, module and resource handles,
// message boxes, the clock, quitting with the main window.
#include <filesystem>
#include <fstream>

#include "support/platform_scratch.h"
#include "window_fixture.h"

namespace {

using AppTest = mfc_test::WindowTest;

TEST_F(AppTest, TheApplicationObjectAndItsHandles) {
    EXPECT_EQ(AfxGetApp(), nullptr);
    HINSTANCE module = AfxGetInstanceHandle();
    EXPECT_NE(module, nullptr);
    EXPECT_EQ(AfxGetResourceHandle(), module) << "resources come from the application by default";
    {
        CWinApp app(L"Head unit");
        EXPECT_EQ(AfxGetApp(), &app);
        EXPECT_EQ(app.m_hInstance, module);
        EXPECT_STREQ(AfxGetAppName(), L"Head unit");
        EXPECT_FALSE(FreeLibrary(module)) << "the application's module is never freed";
    }
    EXPECT_EQ(AfxGetApp(), nullptr);

    HINSTANCE other = reinterpret_cast<HINSTANCE>(0x42);
    AfxSetResourceHandle(other);
    EXPECT_EQ(AfxGetResourceHandle(), other);
    AfxSetResourceHandle(nullptr);
    EXPECT_EQ(AfxGetResourceHandle(), module);
}

TEST_F(AppTest, MessageBoxesAreRecordedWithTheMainWindowAndAppName) {
    CWinApp app(L"Radio");
    CWnd main;
    ASSERT_TRUE(main.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    app.m_pMainWnd = &main;
    zel::ClearMessageBoxes();
    testing::internal::CaptureStderr();
    EXPECT_EQ(AfxMessageBox(L"fjie"), IDOK);
    testing::internal::GetCapturedStderr();
    ASSERT_EQ(zel::MessageBoxes().size(), 1u);
    EXPECT_EQ(zel::MessageBoxes()[0].owner, main.m_hWnd);
    EXPECT_EQ(zel::MessageBoxes()[0].text, L"fjie");
    EXPECT_EQ(zel::MessageBoxes()[0].caption, L"Radio");
    zel::ClearMessageBoxes();
    app.m_pMainWnd = nullptr;
}

TEST_F(AppTest, DestroyingTheMainWindowQuits) {
    CWinApp app;
    CWnd main;
    ASSERT_TRUE(main.CreateEx(0, nullptr, L"", WS_POPUP, 0, 0, 10, 10, nullptr, nullptr));
    app.m_pMainWnd = &main;
    main.DestroyWindow();
    EXPECT_EQ(app.m_pMainWnd, nullptr);
    MSG msg{};
    ASSERT_TRUE(PeekMessageW(&msg, nullptr, 0, 0, PM_REMOVE));
    EXPECT_EQ(msg.message, static_cast<UINT>(WM_QUIT));
}

TEST_F(AppTest, CurrentTimeComesFromThePlatformClock) {
    zel::DesktopConfig config;
    config.localStart = SYSTEMTIME{2027, 6, 2, 15, 8, 30, 0, 0};
    Desk().Reset(config);
    CTime now = CTime::GetCurrentTime();
    EXPECT_STREQ(now.Format(L"%Y-%m-%d %H:%M"), L"2027-06-15 08:30");
    EXPECT_EQ(now.GetDayOfWeek(), 3) << "Tuesday";
    Desk().Advance(61000);
    EXPECT_EQ((CTime::GetCurrentTime() - now).GetTotalSeconds(), 61);
}

// Bitmaps by identifier from a resource script, through the current resource handle.
TEST_F(AppTest, BitmapsLoadFromTheResourceHandle) {
    zel::test::ScratchFolder scratch;
    std::filesystem::create_directories(scratch.dir() / "res");
    // A 2x1 24-bit BMP: blue, red (rows are stored bottom-up, BGR, padded to 4 bytes).
    const unsigned char bmp[] = {'B', 'M', 62, 0, 0, 0, 0, 0, 0, 0, 54, 0, 0, 0, 40, 0, 0, 0, 2, 0, 0, 0, 1, 0, 0,
                                 0, 1, 0, 24, 0, 0, 0, 0, 0, 8, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0,
                                 0, 0, 255, 0, 0, 0, 0, 255, 0, 0};
    scratch.Write("res/pair.bmp", std::string(reinterpret_cast<const char*>(bmp), sizeof bmp));
    scratch.Write("skin.h", "#define IDB_PAIR 0x10203\n");
    HINSTANCE skin =
        zel::LoadResourceModule(scratch.Write("skin.rc", "#include \"skin.h\"\nIDB_PAIR BITMAP \"res\\\\pair.bmp\"\n").c_str());
    ASSERT_NE(skin, nullptr);
    {
        CBitmap bitmap;
        EXPECT_FALSE(bitmap.LoadBitmap(0x0203)) << "the application's module has no such bitmap";
        HINSTANCE previous = AfxGetResourceHandle();
        AfxSetResourceHandle(skin);
        EXPECT_TRUE(bitmap.LoadBitmap(0x10203 & 0xFFFF));
        AfxSetResourceHandle(previous);
        BITMAP bm{};
        ASSERT_EQ(bitmap.GetBitmap(&bm), static_cast<int>(sizeof bm));
        EXPECT_EQ(bm.bmWidth, 2);
        EXPECT_EQ(bm.bmHeight, 1);
        CDC dc;
        dc.CreateCompatibleDC(nullptr);
        CBitmap* old = dc.SelectObject(&bitmap);
        EXPECT_EQ(dc.GetPixel(0, 0), RGB(0, 0, 255));
        EXPECT_EQ(dc.GetPixel(1, 0), RGB(255, 0, 0));
        dc.SelectObject(old);
        HBITMAP byName = LoadBitmapW(skin, L"#515");
        EXPECT_NE(byName, nullptr) << "\"#515\" is identifier 515 (0x203)";
        DeleteObject(byName);
    }
    EXPECT_TRUE(FreeLibrary(skin));
}

}  // namespace
