// USER: windows, messages, input, timers and the system classes.
#pragma once

#include "zel/win/types.h"
#include "zel/win/user_gdi.h"

typedef LRESULT(CALLBACK* WNDPROC)(HWND, UINT, WPARAM, LPARAM);
typedef void(CALLBACK* TIMERPROC)(HWND, UINT, UINT_PTR, DWORD);
typedef INT_PTR(CALLBACK* DLGPROC)(HWND, UINT, WPARAM, LPARAM);

// ---- messages ----
#define WM_NULL 0x0000
#define WM_CREATE 0x0001
#define WM_DESTROY 0x0002
#define WM_MOVE 0x0003
#define WM_SIZE 0x0005
#define WM_ACTIVATE 0x0006
#define WM_SETFOCUS 0x0007
#define WM_KILLFOCUS 0x0008
#define WM_ENABLE 0x000A
#define WM_SETREDRAW 0x000B
#define WM_SETTEXT 0x000C
#define WM_GETTEXT 0x000D
#define WM_GETTEXTLENGTH 0x000E
#define WM_PAINT 0x000F
#define WM_CLOSE 0x0010
#define WM_QUIT 0x0012
#define WM_ERASEBKGND 0x0014
#define WM_SYSCOLORCHANGE 0x0015
#define WM_SHOWWINDOW 0x0018
#define WM_SETTINGCHANGE 0x001A
#define WM_ACTIVATEAPP 0x001C
#define WM_CANCELMODE 0x001F
#define WM_SETCURSOR 0x0020
#define WM_MOUSEACTIVATE 0x0021
#define WM_DRAWITEM 0x002B
#define WM_MEASUREITEM 0x002C
#define WM_DELETEITEM 0x002D
#define WM_VKEYTOITEM 0x002E
#define WM_CHARTOITEM 0x002F
#define WM_SETFONT 0x0030
#define WM_GETFONT 0x0031
#define WM_COMPAREITEM 0x0039
#define WM_WINDOWPOSCHANGING 0x0046
#define WM_WINDOWPOSCHANGED 0x0047
#define WM_NOTIFY 0x004E
#define WM_NCCREATE 0x0081
#define WM_NCDESTROY 0x0082
#define WM_NCCALCSIZE 0x0083
#define WM_NCHITTEST 0x0084
#define WM_NCPAINT 0x0085
#define WM_GETDLGCODE 0x0087
#define WM_KEYFIRST 0x0100
#define WM_KEYDOWN 0x0100
#define WM_KEYUP 0x0101
#define WM_CHAR 0x0102
#define WM_SYSKEYDOWN 0x0104
#define WM_SYSKEYUP 0x0105
#define WM_KEYLAST 0x0109
#define WM_INITDIALOG 0x0110
#define WM_COMMAND 0x0111
#define WM_SYSCOMMAND 0x0112
#define WM_TIMER 0x0113
#define WM_HSCROLL 0x0114
#define WM_VSCROLL 0x0115
#define WM_CTLCOLORMSGBOX 0x0132
#define WM_CTLCOLOREDIT 0x0133
#define WM_CTLCOLORLISTBOX 0x0134
#define WM_CTLCOLORBTN 0x0135
#define WM_CTLCOLORDLG 0x0136
#define WM_CTLCOLORSCROLLBAR 0x0137
#define WM_CTLCOLORSTATIC 0x0138
#define WM_MOUSEFIRST 0x0200
#define WM_MOUSEMOVE 0x0200
#define WM_LBUTTONDOWN 0x0201
#define WM_LBUTTONUP 0x0202
#define WM_LBUTTONDBLCLK 0x0203
#define WM_RBUTTONDOWN 0x0204
#define WM_RBUTTONUP 0x0205
#define WM_RBUTTONDBLCLK 0x0206
#define WM_MOUSELAST 0x0209
#define WM_PARENTNOTIFY 0x0210
#define WM_CAPTURECHANGED 0x0215
#define WM_NEXTDLGCTL 0x0028
#define WM_USER 0x0400
#define DM_GETDEFID (WM_USER + 0)
#define DM_SETDEFID (WM_USER + 1)
#define DC_HASDEFID 0x534B
#define WM_APP 0x8000

// ---- window styles ----
#define WS_OVERLAPPED 0x00000000L
#define WS_POPUP 0x80000000L
#define WS_CHILD 0x40000000L
#define WS_VISIBLE 0x10000000L
#define WS_DISABLED 0x08000000L
#define WS_CLIPSIBLINGS 0x04000000L
#define WS_CLIPCHILDREN 0x02000000L
#define WS_CAPTION 0x00C00000L
#define WS_BORDER 0x00800000L
#define WS_DLGFRAME 0x00400000L
#define WS_VSCROLL 0x00200000L
#define WS_HSCROLL 0x00100000L
#define WS_SYSMENU 0x00080000L
#define WS_GROUP 0x00020000L
#define WS_TABSTOP 0x00010000L
#define WS_OVERLAPPEDWINDOW (WS_OVERLAPPED | WS_CAPTION | WS_SYSMENU | WS_THICKFRAME | WS_MINIMIZEBOX | WS_MAXIMIZEBOX)
#define WS_EX_DLGMODALFRAME 0x00000001L
#define WS_EX_NOPARENTNOTIFY 0x00000004L
#define WS_EX_TOPMOST 0x00000008L
#define WS_EX_TRANSPARENT 0x00000020L
#define WS_EX_CLIENTEDGE 0x00000200L
#define WS_EX_STATICEDGE 0x00020000L
#define WS_EX_CONTROLPARENT 0x00010000L
#define WS_EX_NOACTIVATE 0x08000000L
#define WS_THICKFRAME 0x00040000L
#define WS_MINIMIZEBOX 0x00020000L
#define WS_MAXIMIZEBOX 0x00010000L
#define WS_MINIMIZE 0x20000000L
#define WS_MAXIMIZE 0x01000000L
#define WS_CHILDWINDOW WS_CHILD
#define WS_SIZEBOX WS_THICKFRAME
#define WS_TILED WS_OVERLAPPED
#define WS_EX_ACCEPTFILES 0x00000010L
#define WS_EX_TOOLWINDOW 0x00000080L
#define WS_EX_WINDOWEDGE 0x00000100L
#define WS_EX_CONTEXTHELP 0x00000400L
#define WS_EX_RIGHT 0x00001000L
#define WS_EX_LEFT 0x00000000L
#define WS_EX_RTLREADING 0x00002000L
#define WS_EX_LTRREADING 0x00000000L
#define WS_EX_LEFTSCROLLBAR 0x00004000L
#define WS_EX_APPWINDOW 0x00040000L
#define WS_EX_CAPTIONOKBTN 0x80000000L
#define WS_POPUPWINDOW (WS_POPUP | WS_BORDER | WS_SYSMENU)
#define CW_USEDEFAULT ((int)0x80000000)

// ---- class styles ----
#define CS_VREDRAW 0x0001
#define CS_HREDRAW 0x0002
#define CS_DBLCLKS 0x0008
#define CS_OWNDC 0x0020
#define CS_CLASSDC 0x0040
#define CS_PARENTDC 0x0080
#define CS_NOCLOSE 0x0200
#define CS_SAVEBITS 0x0800
#define CS_GLOBALCLASS 0x4000

// ---- ShowWindow / SetWindowPos ----
#define SW_HIDE 0
#define SW_SHOWNORMAL 1
#define SW_NORMAL 1
#define SW_SHOWMINIMIZED 2
#define SW_SHOWMAXIMIZED 3
#define SW_MAXIMIZE 3
#define SW_SHOWNOACTIVATE 4
#define SW_SHOW 5
#define SW_MINIMIZE 6
#define SW_SHOWMINNOACTIVE 7
#define SW_SHOWNA 8
#define SW_RESTORE 9
#define SWP_NOSIZE 0x0001
#define SWP_NOMOVE 0x0002
#define SWP_NOZORDER 0x0004
#define SWP_NOREDRAW 0x0008
#define SWP_NOACTIVATE 0x0010
#define SWP_FRAMECHANGED 0x0020
#define SWP_SHOWWINDOW 0x0040
#define SWP_HIDEWINDOW 0x0080
#define SWP_NOOWNERZORDER 0x0200
#define HWND_TOP ((HWND)0)
#define HWND_BOTTOM ((HWND)1)
#define HWND_TOPMOST ((HWND)-1)
#define HWND_NOTOPMOST ((HWND)-2)
#define HWND_DESKTOP ((HWND)0)

// ---- window longs ----
#define GWL_WNDPROC (-4)
#define GWL_HINSTANCE (-6)
#define GWL_HWNDPARENT (-8)
#define GWL_STYLE (-16)
#define GWL_EXSTYLE (-20)
#define GWL_USERDATA (-21)
#define GWL_ID (-12)
#define GWLP_WNDPROC GWL_WNDPROC
#define GWLP_HINSTANCE GWL_HINSTANCE
#define GWLP_USERDATA GWL_USERDATA
#define GWLP_ID GWL_ID
#define GCL_MENUNAME (-8)
#define GCL_HBRBACKGROUND (-10)
#define GCL_HCURSOR (-12)
#define GCL_HICON (-14)
#define GCL_CBWNDEXTRA (-18)
#define GCL_CBCLSEXTRA (-20)
#define GCL_WNDPROC (-24)
#define GCL_STYLE (-26)
#define GCLP_HBRBACKGROUND GCL_HBRBACKGROUND
#define GCLP_WNDPROC GCL_WNDPROC
#define GCLP_HCURSOR GCL_HCURSOR
#define GCLP_HICON GCL_HICON

// ---- GetWindow ----
#define GW_HWNDFIRST 0
#define GW_HWNDLAST 1
#define GW_HWNDNEXT 2
#define GW_HWNDPREV 3
#define GW_OWNER 4
#define GW_CHILD 5

// ---- system metrics ----
#define SM_CXSCREEN 0
#define SM_CYSCREEN 1
#define SM_CXVSCROLL 2
#define SM_CYHSCROLL 3
#define SM_CYCAPTION 4
#define SM_CXBORDER 5
#define SM_CYBORDER 6
#define SM_CXDLGFRAME 7
#define SM_CYDLGFRAME 8
#define SM_CYVTHUMB 9
#define SM_CXHTHUMB 10
#define SM_CXICON 11
#define SM_CYICON 12
#define SM_CXCURSOR 13
#define SM_CYCURSOR 14
#define SM_CYMENU 15
#define SM_CXFULLSCREEN 16
#define SM_CYFULLSCREEN 17
#define SM_CYVSCROLL 20
#define SM_CXHSCROLL 21
#define SM_CXDOUBLECLK 36
#define SM_CYDOUBLECLK 37
#define SM_CXEDGE 45
#define SM_CYEDGE 46

// ---- keys and mouse ----
#define MK_LBUTTON 0x0001
#define MK_RBUTTON 0x0002
#define MK_SHIFT 0x0004
#define MK_CONTROL 0x0008
#define MK_MBUTTON 0x0010
#define VK_LBUTTON 0x01
#define VK_BACK 0x08
#define VK_TAB 0x09
#define VK_RETURN 0x0D
#define VK_SHIFT 0x10
#define VK_CONTROL 0x11
#define VK_MENU 0x12
#define VK_ESCAPE 0x1B
#define VK_SPACE 0x20
#define VK_PRIOR 0x21
#define VK_NEXT 0x22
#define VK_END 0x23
#define VK_HOME 0x24
#define VK_LEFT 0x25
#define VK_UP 0x26
#define VK_RIGHT 0x27
#define VK_DOWN 0x28
#define VK_INSERT 0x2D
#define VK_DELETE 0x2E
#define VK_F1 0x70
#define VK_F4 0x73  // opens and closes a drop-down combo box

// ---- hit test codes ----
#define HTERROR (-2)
#define HTTRANSPARENT (-1)
#define HTNOWHERE 0
#define HTCLIENT 1

// ---- PeekMessage ----
#define PM_NOREMOVE 0x0000
#define PM_REMOVE 0x0001
#define PM_NOYIELD 0x0002

// ---- buttons ----
#define BS_PUSHBUTTON 0x00000000L
#define BS_DEFPUSHBUTTON 0x00000001L
#define BS_CHECKBOX 0x00000002L
#define BS_AUTOCHECKBOX 0x00000003L
#define BS_RADIOBUTTON 0x00000004L
#define BS_3STATE 0x00000005L
#define BS_AUTO3STATE 0x00000006L
#define BS_GROUPBOX 0x00000007L
#define BS_USERBUTTON 0x00000008L
#define BS_AUTORADIOBUTTON 0x00000009L
#define BS_PUSHBOX 0x0000000AL
#define BS_OWNERDRAW 0x0000000BL
#define BS_TYPEMASK 0x0000000FL
#define BS_LEFTTEXT 0x00000020L
#define BS_BITMAP 0x00000080L
#define BS_NOTIFY 0x00004000L
#define BS_TEXT 0x00000000L
#define BS_ICON 0x00000040L
#define BS_LEFT 0x00000100L
#define BS_RIGHT 0x00000200L
#define BS_CENTER 0x00000300L
#define BS_TOP 0x00000400L
#define BS_BOTTOM 0x00000800L
#define BS_VCENTER 0x00000C00L
#define BS_PUSHLIKE 0x00001000L
#define BS_MULTILINE 0x00002000L
#define BS_FLAT 0x00008000L
#define BS_RIGHTBUTTON BS_LEFTTEXT
#define BN_CLICKED 0
#define BN_PAINT 1
#define BN_HILITE 2
#define BN_UNHILITE 3
#define BN_DISABLE 4
#define BN_DOUBLECLICKED 5
#define BN_DBLCLK BN_DOUBLECLICKED
#define BN_SETFOCUS 6
#define BN_KILLFOCUS 7
#define BM_GETCHECK 0x00F0
#define BM_SETCHECK 0x00F1
#define BM_GETSTATE 0x00F2
#define BM_SETSTATE 0x00F3
#define BM_SETSTYLE 0x00F4
#define BM_CLICK 0x00F5
#define BM_GETIMAGE 0x00F6
#define BM_SETIMAGE 0x00F7
#define BST_UNCHECKED 0x0000
#define BST_CHECKED 0x0001
#define BST_INDETERMINATE 0x0002
#define BST_PUSHED 0x0004
#define BST_FOCUS 0x0008

// ---- statics ----
#define SS_LEFT 0x00000000L
#define SS_CENTER 0x00000001L
#define SS_RIGHT 0x00000002L
#define SS_ICON 0x00000003L
#define SS_BITMAP 0x0000000EL
#define SS_TYPEMASK 0x0000001FL
#define SS_NOTIFY 0x00000100L
#define SS_CENTERIMAGE 0x00000200L
#define SS_REALSIZECONTROL 0x00000040L
#define SS_BLACKRECT 0x00000004L
#define SS_GRAYRECT 0x00000005L
#define SS_WHITERECT 0x00000006L
#define SS_BLACKFRAME 0x00000007L
#define SS_GRAYFRAME 0x00000008L
#define SS_WHITEFRAME 0x00000009L
#define SS_SIMPLE 0x0000000BL
#define SS_LEFTNOWORDWRAP 0x0000000CL
#define SS_OWNERDRAW 0x0000000DL
#define SS_ETCHEDHORZ 0x00000010L
#define SS_ETCHEDVERT 0x00000011L
#define SS_ETCHEDFRAME 0x00000012L
#define SS_NOPREFIX 0x00000080L
#define SS_RIGHTJUST 0x00000400L
#define SS_REALSIZEIMAGE 0x00000800L
#define SS_SUNKEN 0x00001000L
#define SS_ENDELLIPSIS 0x00004000L
#define STM_SETICON 0x0170
#define STM_GETICON 0x0171
#define STM_SETIMAGE 0x0172
#define STM_GETIMAGE 0x0173
#define STN_CLICKED 0
#define STN_DBLCLK 1
#define IMAGE_BITMAP 0
#define IMAGE_ICON 1
#define IMAGE_CURSOR 2

// ---- dialog templates and the dialog manager ----
#define DS_ABSALIGN 0x01L
#define DS_SYSMODAL 0x02L
#define DS_3DLOOK 0x04L
#define DS_FIXEDSYS 0x08L
#define DS_NOFAILCREATE 0x10L
#define DS_LOCALEDIT 0x20L
#define DS_SETFONT 0x40L
#define DS_MODALFRAME 0x80L
#define DS_NOIDLEMSG 0x100L
#define DS_SETFOREGROUND 0x200L
#define DS_CONTROL 0x400L
#define DS_CENTER 0x800L
#define DS_CENTERMOUSE 0x1000L
#define DS_CONTEXTHELP 0x2000L
#define DS_SHELLFONT (DS_SETFONT | DS_FIXEDSYS)
#define DLGC_WANTARROWS 0x0001
#define DLGC_WANTTAB 0x0002
#define DLGC_WANTALLKEYS 0x0004
#define DLGC_WANTMESSAGE 0x0004
#define DLGC_HASSETSEL 0x0008
#define DLGC_DEFPUSHBUTTON 0x0010
#define DLGC_UNDEFPUSHBUTTON 0x0020
#define DLGC_RADIOBUTTON 0x0040
#define DLGC_WANTCHARS 0x0080
#define DLGC_STATIC 0x0100
#define DLGC_BUTTON 0x2000
// The dialog's window extra bytes: the result of the message being processed, the dialog
// procedure, and a pointer for the application.
#define DWLP_MSGRESULT 0
#define DWLP_DLGPROC (DWLP_MSGRESULT + sizeof(LRESULT))
#define DWLP_USER (DWLP_DLGPROC + sizeof(DLGPROC))
#define DWL_MSGRESULT DWLP_MSGRESULT
#define DWL_DLGPROC DWLP_DLGPROC
#define DWL_USER DWLP_USER
#define DLGWINDOWEXTRA 48
#define WC_DIALOG MAKEINTRESOURCEW(0x8002)
#define IDCLOSE 8
#define IDHELP 9
#define IDC_STATIC (-1)

// ---- edits, lists, combo boxes, scroll bar controls (styles only: these classes are
// plain windows here, for the library's controls to subclass) ----
#define ES_LEFT 0x0000L
#define ES_CENTER 0x0001L
#define ES_RIGHT 0x0002L
#define ES_MULTILINE 0x0004L
#define ES_UPPERCASE 0x0008L
#define ES_LOWERCASE 0x0010L
#define ES_PASSWORD 0x0020L
#define ES_AUTOVSCROLL 0x0040L
#define ES_AUTOHSCROLL 0x0080L
#define ES_NOHIDESEL 0x0100L
#define ES_READONLY 0x0800L
#define ES_WANTRETURN 0x1000L
#define ES_NUMBER 0x2000L
#define ES_OEMCONVERT 0x0400L
#define LBS_NOTIFY 0x0001L
#define LBS_SORT 0x0002L
#define LBS_NOREDRAW 0x0004L
#define LBS_MULTIPLESEL 0x0008L
#define LBS_OWNERDRAWFIXED 0x0010L
#define LBS_OWNERDRAWVARIABLE 0x0020L
#define LBS_HASSTRINGS 0x0040L
#define LBS_USETABSTOPS 0x0080L
#define LBS_NOINTEGRALHEIGHT 0x0100L
#define LBS_MULTICOLUMN 0x0200L
#define LBS_WANTKEYBOARDINPUT 0x0400L
#define LBS_EXTENDEDSEL 0x0800L
#define LBS_DISABLENOSCROLL 0x1000L
#define LBS_NODATA 0x2000L
#define LBS_NOSEL 0x4000L
#define LBS_STANDARD (LBS_NOTIFY | LBS_SORT | WS_VSCROLL | WS_BORDER)
#define CBS_SIMPLE 0x0001L
#define CBS_DROPDOWN 0x0002L
#define CBS_DROPDOWNLIST 0x0003L
#define CBS_OWNERDRAWFIXED 0x0010L
#define CBS_OWNERDRAWVARIABLE 0x0020L
#define CBS_AUTOHSCROLL 0x0040L
#define CBS_SORT 0x0100L
#define CBS_HASSTRINGS 0x0200L
#define CBS_OEMCONVERT 0x0080L
#define CBS_NOINTEGRALHEIGHT 0x0400L
#define CBS_DISABLENOSCROLL 0x0800L
#define CBS_UPPERCASE 0x2000L
#define CBS_LOWERCASE 0x4000L
#define SBS_HORZ 0x0000L
#define SBS_VERT 0x0001L
#define SBS_TOPALIGN 0x0002L
#define SBS_LEFTALIGN 0x0002L
#define SBS_BOTTOMALIGN 0x0004L
#define SBS_RIGHTALIGN 0x0004L
#define SBS_SIZEBOX 0x0008L
#define SBS_SIZEGRIP 0x0010L
// ---- combo boxes ----
#define CB_OKAY 0
#define CB_ERR (-1)
#define CB_ERRSPACE (-2)
#define CBN_ERRSPACE (-1)
#define CBN_SELCHANGE 1
#define CBN_DBLCLK 2
#define CBN_SETFOCUS 3
#define CBN_KILLFOCUS 4
#define CBN_EDITCHANGE 5
#define CBN_EDITUPDATE 6
#define CBN_DROPDOWN 7
#define CBN_CLOSEUP 8
#define CBN_SELENDOK 9
#define CBN_SELENDCANCEL 10

// ---- owner draw ----
#define ODT_MENU 1
#define ODT_LISTBOX 2
#define ODT_COMBOBOX 3
#define ODT_BUTTON 4
#define ODT_STATIC 5
#define ODA_DRAWENTIRE 0x0001
#define ODA_SELECT 0x0002
#define ODA_FOCUS 0x0004
#define ODS_SELECTED 0x0001
#define ODS_GRAYED 0x0002
#define ODS_DISABLED 0x0004
#define ODS_CHECKED 0x0008
#define ODS_FOCUS 0x0010

// ---- scroll bars ----
#define SB_HORZ 0
#define SB_VERT 1
#define SB_CTL 2
#define SB_BOTH 3
#define SB_LINEUP 0
#define SB_LINELEFT 0
#define SB_LINEDOWN 1
#define SB_LINERIGHT 1
#define SB_PAGEUP 2
#define SB_PAGELEFT 2
#define SB_PAGEDOWN 3
#define SB_PAGERIGHT 3
#define SB_THUMBPOSITION 4
#define SB_THUMBTRACK 5
#define SB_TOP 6
#define SB_LEFT 6
#define SB_BOTTOM 7
#define SB_RIGHT 7
#define SB_ENDSCROLL 8
#define SIF_RANGE 0x0001
#define SIF_PAGE 0x0002
#define SIF_POS 0x0004
#define SIF_DISABLENOSCROLL 0x0008
#define SIF_TRACKPOS 0x0010
#define SIF_ALL (SIF_RANGE | SIF_PAGE | SIF_POS | SIF_TRACKPOS)

// ---- activation ----
#define WA_INACTIVE 0
#define WA_ACTIVE 1
#define WA_CLICKACTIVE 2

// ---- message boxes ----
#define MB_OK 0x00000000L
#define MB_OKCANCEL 0x00000001L
#define MB_YESNO 0x00000004L
#define MB_ICONHAND 0x00000010L
#define MB_ICONERROR MB_ICONHAND
#define MB_ICONQUESTION 0x00000020L
#define MB_ICONEXCLAMATION 0x00000030L
#define MB_ICONWARNING MB_ICONEXCLAMATION
#define MB_ICONINFORMATION 0x00000040L
#define IDOK 1
#define IDCANCEL 2
#define IDABORT 3
#define IDRETRY 4
#define IDIGNORE 5
#define IDYES 6
#define IDNO 7

// ---- system colours ----
#define COLOR_SCROLLBAR 0
#define COLOR_BACKGROUND 1
#define COLOR_ACTIVECAPTION 2
#define COLOR_INACTIVECAPTION 3
#define COLOR_MENU 4
#define COLOR_WINDOW 5
#define COLOR_WINDOWFRAME 6
#define COLOR_MENUTEXT 7
#define COLOR_WINDOWTEXT 8
#define COLOR_CAPTIONTEXT 9
#define COLOR_HIGHLIGHT 13
#define COLOR_HIGHLIGHTTEXT 14
#define COLOR_BTNFACE 15
#define COLOR_BTNSHADOW 16
#define COLOR_GRAYTEXT 17
#define COLOR_BTNTEXT 18
#define COLOR_BTNHIGHLIGHT 20

// ---- RedrawWindow ----
#define RDW_INVALIDATE 0x0001
#define RDW_INTERNALPAINT 0x0002
#define RDW_ERASE 0x0004
#define RDW_VALIDATE 0x0008
#define RDW_NOINTERNALPAINT 0x0010
#define RDW_NOERASE 0x0020
#define RDW_NOCHILDREN 0x0040
#define RDW_ALLCHILDREN 0x0080
#define RDW_UPDATENOW 0x0100
#define RDW_ERASENOW 0x0200

#define USER_TIMER_MINIMUM 0x0000000A
#define USER_TIMER_MAXIMUM 0x7FFFFFFF

// ---- structures ----
// Dialog templates in memory: WORD-aligned, strings as UTF-16 code units (WORDs), each item
// DWORD-aligned. The extended form starts with dlgVer 1 and signature 0xFFFF.
#pragma pack(push, 2)
typedef struct {
    DWORD style;
    DWORD dwExtendedStyle;
    WORD cdit;
    short x;
    short y;
    short cx;
    short cy;
} DLGTEMPLATE, *LPDLGTEMPLATEW;
typedef const DLGTEMPLATE* LPCDLGTEMPLATEW;
typedef LPCDLGTEMPLATEW LPCDLGTEMPLATE;
typedef struct {
    DWORD style;
    DWORD dwExtendedStyle;
    short x;
    short y;
    short cx;
    short cy;
    WORD id;
} DLGITEMTEMPLATE, *LPDLGITEMTEMPLATEW;
#pragma pack(pop)

typedef struct tagMSG {
    HWND hwnd;
    UINT message;
    WPARAM wParam;
    LPARAM lParam;
    DWORD time;
    POINT pt;
} MSG, *PMSG, *LPMSG;

typedef struct tagWNDCLASSW {
    UINT style;
    WNDPROC lpfnWndProc;
    int cbClsExtra;
    int cbWndExtra;
    HINSTANCE hInstance;
    HICON hIcon;
    HCURSOR hCursor;
    HBRUSH hbrBackground;
    LPCWSTR lpszMenuName;
    LPCWSTR lpszClassName;
} WNDCLASSW, *PWNDCLASSW, *LPWNDCLASSW;
typedef WNDCLASSW WNDCLASS;

typedef struct tagCREATESTRUCTW {
    LPVOID lpCreateParams;
    HINSTANCE hInstance;
    HMENU hMenu;
    HWND hwndParent;
    int cy;
    int cx;
    int y;
    int x;
    LONG style;
    LPCWSTR lpszName;
    LPCWSTR lpszClass;
    DWORD dwExStyle;
} CREATESTRUCTW, *LPCREATESTRUCTW;
typedef CREATESTRUCTW CREATESTRUCT;
typedef LPCREATESTRUCTW LPCREATESTRUCT;

typedef struct tagPAINTSTRUCT {
    HDC hdc;
    BOOL fErase;
    RECT rcPaint;
    BOOL fRestore;
    BOOL fIncUpdate;
    BYTE rgbReserved[32];
} PAINTSTRUCT, *PPAINTSTRUCT, *LPPAINTSTRUCT;

typedef struct tagDRAWITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemAction;
    UINT itemState;
    HWND hwndItem;
    HDC hDC;
    RECT rcItem;
    ULONG_PTR itemData;
} DRAWITEMSTRUCT, *PDRAWITEMSTRUCT, *LPDRAWITEMSTRUCT;

typedef struct tagMEASUREITEMSTRUCT {
    UINT CtlType;
    UINT CtlID;
    UINT itemID;
    UINT itemWidth;
    UINT itemHeight;
    ULONG_PTR itemData;
} MEASUREITEMSTRUCT, *LPMEASUREITEMSTRUCT;

typedef struct tagNMHDR {
    HWND hwndFrom;
    UINT_PTR idFrom;
    UINT code;
} NMHDR, *LPNMHDR;

typedef struct tagWINDOWPOS {
    HWND hwnd;
    HWND hwndInsertAfter;
    int x;
    int y;
    int cx;
    int cy;
    UINT flags;
} WINDOWPOS, *LPWINDOWPOS, *PWINDOWPOS;

typedef struct tagSCROLLINFO {
    UINT cbSize;
    UINT fMask;
    int nMin;
    int nMax;
    UINT nPage;
    int nPos;
    int nTrackPos;
} SCROLLINFO, *LPSCROLLINFO;
typedef const SCROLLINFO* LPCSCROLLINFO;

#ifdef __cplusplus
extern "C" {
#endif

// Classes and windows.
ZEL_API ATOM RegisterClassW(const WNDCLASSW* wc);
ZEL_API BOOL UnregisterClassW(LPCWSTR className, HINSTANCE instance);
ZEL_API BOOL GetClassInfoW(HINSTANCE instance, LPCWSTR className, LPWNDCLASSW wc);
ZEL_API HWND CreateWindowExW(DWORD exStyle, LPCWSTR className, LPCWSTR windowName, DWORD style, int x, int y,
                             int width, int height, HWND parent, HMENU menu, HINSTANCE instance, LPVOID param);
ZEL_API BOOL DestroyWindow(HWND hwnd);
ZEL_API LRESULT DefWindowProcW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
ZEL_API LRESULT CallWindowProcW(WNDPROC proc, HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
ZEL_API BOOL IsWindow(HWND hwnd);
ZEL_API BOOL IsWindowVisible(HWND hwnd);
ZEL_API BOOL IsWindowEnabled(HWND hwnd);
ZEL_API BOOL IsChild(HWND parent, HWND hwnd);
ZEL_API BOOL EnableWindow(HWND hwnd, BOOL enable);
ZEL_API BOOL ShowWindow(HWND hwnd, int cmd);
ZEL_API BOOL MoveWindow(HWND hwnd, int x, int y, int width, int height, BOOL repaint);
ZEL_API BOOL SetWindowPos(HWND hwnd, HWND insertAfter, int x, int y, int cx, int cy, UINT flags);
ZEL_API BOOL BringWindowToTop(HWND hwnd);
ZEL_API BOOL GetClientRect(HWND hwnd, LPRECT rect);
ZEL_API BOOL GetWindowRect(HWND hwnd, LPRECT rect);
ZEL_API BOOL ClientToScreen(HWND hwnd, LPPOINT pt);
ZEL_API BOOL ScreenToClient(HWND hwnd, LPPOINT pt);
ZEL_API int MapWindowPoints(HWND from, HWND to, LPPOINT points, UINT count);
ZEL_API HWND GetParent(HWND hwnd);
ZEL_API HWND SetParent(HWND hwnd, HWND parent);
ZEL_API HWND GetWindow(HWND hwnd, UINT cmd);
ZEL_API HWND GetDesktopWindow(void);
ZEL_API HWND GetDlgItem(HWND dialog, int id);
ZEL_API int GetDlgCtrlID(HWND hwnd);
ZEL_API HWND WindowFromPoint(POINT pt);
ZEL_API HWND ChildWindowFromPoint(HWND parent, POINT pt);
ZEL_API LONG GetWindowLongW(HWND hwnd, int index);
ZEL_API LONG SetWindowLongW(HWND hwnd, int index, LONG value);
ZEL_API LONG_PTR GetWindowLongPtrW(HWND hwnd, int index);
ZEL_API LONG_PTR SetWindowLongPtrW(HWND hwnd, int index, LONG_PTR value);
ZEL_API DWORD GetClassLongW(HWND hwnd, int index);
ZEL_API DWORD SetClassLongW(HWND hwnd, int index, LONG value);
ZEL_API ULONG_PTR GetClassLongPtrW(HWND hwnd, int index);
ZEL_API ULONG_PTR SetClassLongPtrW(HWND hwnd, int index, LONG_PTR value);
ZEL_API int GetClassNameW(HWND hwnd, LPWSTR name, int max);
ZEL_API int GetWindowTextW(HWND hwnd, LPWSTR text, int max);
ZEL_API int GetWindowTextLengthW(HWND hwnd);
ZEL_API BOOL SetWindowTextW(HWND hwnd, LPCWSTR text);
// The window owns the region after success (it keeps its own copy here, so a caller that
// deletes its handle afterwards does no harm). Window coordinates.
ZEL_API int SetWindowRgn(HWND hwnd, HRGN rgn, BOOL redraw);
ZEL_API int GetWindowRgn(HWND hwnd, HRGN rgn);
ZEL_API int GetSystemMetrics(int index);
ZEL_API DWORD GetSysColor(int index);
ZEL_API HBRUSH GetSysColorBrush(int index);

// Painting.
ZEL_API HDC BeginPaint(HWND hwnd, LPPAINTSTRUCT ps);
ZEL_API BOOL EndPaint(HWND hwnd, const PAINTSTRUCT* ps);
ZEL_API BOOL InvalidateRect(HWND hwnd, const RECT* rect, BOOL erase);
ZEL_API BOOL InvalidateRgn(HWND hwnd, HRGN rgn, BOOL erase);
ZEL_API BOOL ValidateRect(HWND hwnd, const RECT* rect);
ZEL_API BOOL ValidateRgn(HWND hwnd, HRGN rgn);
ZEL_API BOOL UpdateWindow(HWND hwnd);
ZEL_API BOOL GetUpdateRect(HWND hwnd, LPRECT rect, BOOL erase);
ZEL_API int GetUpdateRgn(HWND hwnd, HRGN rgn, BOOL erase);
ZEL_API BOOL RedrawWindow(HWND hwnd, const RECT* rect, HRGN rgn, UINT flags);

// Messages.
ZEL_API LRESULT SendMessageW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
ZEL_API BOOL PostMessageW(HWND hwnd, UINT msg, WPARAM wParam, LPARAM lParam);
ZEL_API BOOL PeekMessageW(LPMSG msg, HWND hwnd, UINT filterMin, UINT filterMax, UINT remove);
// Waits for a timer on the real clock; when nothing can ever arrive (virtual clock, no
// timer) it returns FALSE as if WM_QUIT had been retrieved.
ZEL_API BOOL GetMessageW(LPMSG msg, HWND hwnd, UINT filterMin, UINT filterMax);
ZEL_API LRESULT DispatchMessageW(const MSG* msg);
ZEL_API BOOL TranslateMessage(const MSG* msg);
ZEL_API void PostQuitMessage(int exitCode);
ZEL_API DWORD GetMessagePos(void);
ZEL_API LONG GetMessageTime(void);

// Timers.
ZEL_API UINT_PTR SetTimer(HWND hwnd, UINT_PTR id, UINT elapse, TIMERPROC proc);
ZEL_API BOOL KillTimer(HWND hwnd, UINT_PTR id);

// Input.
ZEL_API HWND SetCapture(HWND hwnd);
ZEL_API BOOL ReleaseCapture(void);
ZEL_API HWND GetCapture(void);
ZEL_API HWND SetFocus(HWND hwnd);
ZEL_API HWND GetFocus(void);
ZEL_API HWND GetActiveWindow(void);
ZEL_API HWND SetActiveWindow(HWND hwnd);
ZEL_API HWND GetForegroundWindow(void);
ZEL_API BOOL SetForegroundWindow(HWND hwnd);
ZEL_API UINT GetDoubleClickTime(void);
ZEL_API BOOL SetDoubleClickTime(UINT ms);
ZEL_API short GetKeyState(int vk);
ZEL_API short GetAsyncKeyState(int vk);
ZEL_API BOOL GetCursorPos(LPPOINT pt);

// Dialogs. Templates come from a resource module's DIALOG/DIALOGEX statements or from
// memory; dialog units become pixels through the dialog font's base units.
ZEL_API HWND CreateDialogParamW(HINSTANCE instance, LPCWSTR templateName, HWND owner, DLGPROC proc, LPARAM param);
ZEL_API HWND CreateDialogIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW dlgTemplate, HWND owner, DLGPROC proc,
                                        LPARAM param);
// Modal: runs its own message loop until EndDialog and returns its result (-1 when the
// dialog cannot be created). Without input to wait for (headless, nothing scheduled) the
// loop ends the dialog as Escape would; see zel::SetModalIdleHook.
ZEL_API INT_PTR DialogBoxParamW(HINSTANCE instance, LPCWSTR templateName, HWND owner, DLGPROC proc, LPARAM param);
ZEL_API INT_PTR DialogBoxIndirectParamW(HINSTANCE instance, LPCDLGTEMPLATEW dlgTemplate, HWND owner, DLGPROC proc,
                                        LPARAM param);
ZEL_API BOOL EndDialog(HWND dialog, INT_PTR result);
ZEL_API LRESULT DefDlgProcW(HWND dialog, UINT msg, WPARAM wParam, LPARAM lParam);
ZEL_API BOOL IsDialogMessageW(HWND dialog, LPMSG msg);
ZEL_API BOOL MapDialogRect(HWND dialog, LPRECT rect);
ZEL_API LONG GetDialogBaseUnits(void);
ZEL_API HWND GetNextDlgTabItem(HWND dialog, HWND control, BOOL previous);
ZEL_API HWND GetNextDlgGroupItem(HWND dialog, HWND control, BOOL previous);
ZEL_API BOOL SetDlgItemTextW(HWND dialog, int id, LPCWSTR text);
ZEL_API UINT GetDlgItemTextW(HWND dialog, int id, LPWSTR text, int max);
ZEL_API BOOL SetDlgItemInt(HWND dialog, int id, UINT value, BOOL isSigned);
ZEL_API UINT GetDlgItemInt(HWND dialog, int id, BOOL* translated, BOOL isSigned);
ZEL_API LRESULT SendDlgItemMessageW(HWND dialog, int id, UINT msg, WPARAM wParam, LPARAM lParam);
ZEL_API BOOL CheckDlgButton(HWND dialog, int id, UINT check);
ZEL_API UINT IsDlgButtonChecked(HWND dialog, int id);
ZEL_API BOOL CheckRadioButton(HWND dialog, int first, int last, int check);

// Window properties: a handle-sized value per name (a string or an atom), per window.
ZEL_API BOOL SetPropW(HWND hwnd, LPCWSTR name, HANDLE data);
ZEL_API HANDLE GetPropW(HWND hwnd, LPCWSTR name);
ZEL_API HANDLE RemovePropW(HWND hwnd, LPCWSTR name);

// Strings from a resource module's STRINGTABLE. With max 0, *buffer receives a read-only
// pointer to the string and the result is its length.
ZEL_API int LoadStringW(HINSTANCE instance, UINT id, LPWSTR buffer, int max);

// Dialog-less message box: recorded and printed headless, returns IDOK.
ZEL_API int MessageBoxW(HWND owner, LPCWSTR text, LPCWSTR caption, UINT type);

// Resources (bitmaps from a resource module; see zel/resources.h).
ZEL_API HBITMAP LoadBitmapW(HINSTANCE instance, LPCWSTR name);
ZEL_API HCURSOR LoadCursorW(HINSTANCE instance, LPCWSTR name);

#ifdef __cplusplus
}
#endif

#define IDC_ARROW MAKEINTRESOURCEW(32512)

#define RegisterClass RegisterClassW
#define UnregisterClass UnregisterClassW
#define GetClassInfo GetClassInfoW
#define CreateWindowEx CreateWindowExW
#define CreateWindowW(cls, name, style, x, y, w, h, parent, menu, inst, param) \
    CreateWindowExW(0L, cls, name, style, x, y, w, h, parent, menu, inst, param)
#define CreateWindow CreateWindowW
#define DefWindowProc DefWindowProcW
#define CallWindowProc CallWindowProcW
#define GetWindowLong GetWindowLongW
#define SetWindowLong SetWindowLongW
#define GetWindowLongPtr GetWindowLongPtrW
#define SetWindowLongPtr SetWindowLongPtrW
#define GetClassLong GetClassLongW
#define SetClassLong SetClassLongW
#define GetClassLongPtr GetClassLongPtrW
#define SetClassLongPtr SetClassLongPtrW
#define GetClassName GetClassNameW
#define GetWindowText GetWindowTextW
#define GetWindowTextLength GetWindowTextLengthW
#define SetWindowText SetWindowTextW
#define SendMessage SendMessageW
#define PostMessage PostMessageW
#define PeekMessage PeekMessageW
#define GetMessage GetMessageW
#define DispatchMessage DispatchMessageW
#define MessageBox MessageBoxW
#define LoadBitmap LoadBitmapW
#define CreateDialogParam CreateDialogParamW
#define CreateDialogIndirectParam CreateDialogIndirectParamW
#define CreateDialogW(inst, name, owner, proc) CreateDialogParamW(inst, name, owner, proc, 0)
#define CreateDialog CreateDialogW
#define CreateDialogIndirectW(inst, tmpl, owner, proc) CreateDialogIndirectParamW(inst, tmpl, owner, proc, 0)
#define CreateDialogIndirect CreateDialogIndirectW
#define DialogBoxParam DialogBoxParamW
#define DialogBoxIndirectParam DialogBoxIndirectParamW
#define DialogBoxW(inst, name, owner, proc) DialogBoxParamW(inst, name, owner, proc, 0)
#define DialogBox DialogBoxW
#define DialogBoxIndirectW(inst, tmpl, owner, proc) DialogBoxIndirectParamW(inst, tmpl, owner, proc, 0)
#define DialogBoxIndirect DialogBoxIndirectW
#define DefDlgProc DefDlgProcW
#define IsDialogMessage IsDialogMessageW
#define SetDlgItemText SetDlgItemTextW
#define GetDlgItemText GetDlgItemTextW
#define SendDlgItemMessage SendDlgItemMessageW
#define SetProp SetPropW
#define GetProp GetPropW
#define RemoveProp RemovePropW
#define LoadString LoadStringW
#define LoadCursor LoadCursorW
