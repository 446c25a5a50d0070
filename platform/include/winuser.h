// Dialogs, their controls and messages, strings from resources, message boxes.
#pragma once

#include "windef.h"

using DLGPROC = INT_PTR(CALLBACK*)(HWND, UINT, WPARAM, LPARAM);
using WNDENUMPROC = BOOL(CALLBACK*)(HWND, LPARAM);
using TIMERPROC = void(CALLBACK*)(HWND, UINT, UINT_PTR, DWORD);

#define IDOK 1
#define IDCANCEL 2

inline constexpr UINT WM_NULL = 0x0000;
inline constexpr UINT WM_DESTROY = 0x0002;
inline constexpr UINT WM_SETTEXT = 0x000C;
inline constexpr UINT WM_GETTEXT = 0x000D;
inline constexpr UINT WM_CLOSE = 0x0010;
inline constexpr UINT WM_HELP = 0x0053;
inline constexpr UINT WM_INITDIALOG = 0x0110;
inline constexpr UINT WM_COMMAND = 0x0111;
inline constexpr UINT WM_TIMER = 0x0113;

inline constexpr UINT BM_GETCHECK = 0x00F0;
inline constexpr UINT BM_SETCHECK = 0x00F1;
inline constexpr UINT BM_CLICK = 0x00F5;
inline constexpr UINT BST_UNCHECKED = 0;
inline constexpr UINT BST_CHECKED = 1;
inline constexpr UINT BN_CLICKED = 0;

inline constexpr UINT STM_GETICON = 0x0171;

inline constexpr UINT CB_ADDSTRING = 0x0143;
inline constexpr UINT CB_GETCOUNT = 0x0146;
inline constexpr UINT CB_GETCURSEL = 0x0147;
inline constexpr UINT CB_GETLBTEXT = 0x0148;
inline constexpr UINT CB_INSERTSTRING = 0x014A;
inline constexpr UINT CB_RESETCONTENT = 0x014B;
inline constexpr UINT CB_SETCURSEL = 0x014E;
inline constexpr UINT CB_GETITEMDATA = 0x0150;
inline constexpr UINT CB_SETITEMDATA = 0x0151;
inline constexpr LRESULT CB_ERR = -1;
inline constexpr UINT CBN_SELCHANGE = 1;

inline constexpr UINT LB_ADDSTRING = 0x0180;
inline constexpr UINT LB_GETTEXT = 0x0189;
inline constexpr UINT LB_GETCOUNT = 0x018B;
inline constexpr UINT LB_SETTOPINDEX = 0x0197;
inline constexpr LRESULT LB_ERR = -1;

inline constexpr UINT MB_OK = 0x0000;
inline constexpr UINT MB_ICONERROR = 0x0010;
inline constexpr UINT MB_ICONWARNING = 0x0030;

inline constexpr int SW_HIDE = 0;
inline constexpr int SW_SHOW = 5;
inline constexpr UINT GW_OWNER = 4;
inline constexpr int GWL_STYLE = -16;
inline constexpr DWORD BS_AUTOCHECKBOX = 3;
inline constexpr int DWLP_USER = sizeof(LRESULT) + sizeof(DLGPROC);
inline constexpr UINT SMTO_NORMAL = 0;

inline constexpr DWORD WS_POPUP = 0x80000000u;
inline constexpr DWORD WS_CHILD = 0x40000000u;
inline constexpr DWORD WS_VISIBLE = 0x10000000u;
inline constexpr DWORD WS_DISABLED = 0x08000000u;
inline constexpr DWORD WS_TABSTOP = 0x00010000u;
inline constexpr DWORD DS_SETFONT = 0x40u;

extern "C"
{
    INT_PTR WINAPI DialogBoxParamW(HINSTANCE hInstance, LPCWSTR szTemplate, HWND hwndParent, DLGPROC pDialogProc,
                                   LPARAM lInitParam);
    BOOL WINAPI EndDialog(HWND hwndDialog, INT_PTR nResult);
    int WINAPI LoadStringW(HINSTANCE hInstance, UINT uId, LPWSTR szBuffer, int cchBuffer);
    int WINAPI MessageBoxW(HWND hwndOwner, LPCWSTR szText, LPCWSTR szCaption, UINT uType);

    HWND WINAPI GetDlgItem(HWND hwndDialog, int nId);
    int WINAPI GetDlgCtrlID(HWND hwnd);
    BOOL WINAPI CheckDlgButton(HWND hwndDialog, int nId, UINT uCheck);
    UINT WINAPI IsDlgButtonChecked(HWND hwndDialog, int nId);
    BOOL WINAPI SetDlgItemTextW(HWND hwndDialog, int nId, LPCWSTR szText);
    LRESULT WINAPI SendDlgItemMessageW(HWND hwndDialog, int nId, UINT uMessage, WPARAM wParam, LPARAM lParam);

    BOOL WINAPI EnableWindow(HWND hwnd, BOOL bEnable);
    BOOL WINAPI IsWindowEnabled(HWND hwnd);
    BOOL WINAPI ShowWindow(HWND hwnd, int nShow);
    BOOL WINAPI IsWindowVisible(HWND hwnd);
    BOOL WINAPI IsWindow(HWND hwnd);
    BOOL WINAPI SetWindowTextW(HWND hwnd, LPCWSTR szText);
    HWND WINAPI GetParent(HWND hwnd);
    HWND WINAPI GetWindow(HWND hwnd, UINT uCommand);
    LONG_PTR WINAPI GetWindowLongPtrW(HWND hwnd, int nIndex);
    LONG_PTR WINAPI SetWindowLongPtrW(HWND hwnd, int nIndex, LONG_PTR lValue);

    LRESULT WINAPI SendMessageW(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam);
    LRESULT WINAPI SendMessageTimeoutW(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam, UINT uFlags, UINT uTimeoutMs,
                                       DWORD_PTR* pdwResult);
    BOOL WINAPI PostMessageW(HWND hwnd, UINT uMessage, WPARAM wParam, LPARAM lParam);
    UINT_PTR WINAPI SetTimer(HWND hwnd, UINT_PTR uId, UINT uElapseMs, TIMERPROC pTimerProc);

    // The top-level windows of the process, the newest first.
    BOOL WINAPI EnumWindows(WNDENUMPROC pEnumProc, LPARAM lParam);
    DWORD WINAPI GetWindowThreadProcessId(HWND hwnd, LPDWORD pdwProcessId);
}
