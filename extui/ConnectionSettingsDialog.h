// The connection settings dialog.
#pragma once

#include <windows.h>

struct CCXConnectionSettings;

// Runs the dialog modally over hwndParent on the record, which it edits in place and which names the connection through
// its connection context. 1 after OK, 0 after Cancel, -1 when it could not be made. One dialog at a time in a process.
// Throws std::bad_alloc when there is no memory to show the record.
BOOL RunConnectionSettingsDialog(HWND hwndParent, CCXConnectionSettings& settings);

// The dialog's procedure: 0 for every message. lParam of WM_INITDIALOG is the record's address.
INT_PTR CALLBACK ConnectionSettingsDialogProc(HWND hwndDialog, UINT uMessage, WPARAM wParam, LPARAM lParam);
