// What somebody looking at this process's windows sees.
#pragma once

#include <windows.h>

#include <string>

// The answer of a window of another thread. Throws CHostError when it does not answer for some seconds.
LRESULT Send(HWND hwnd, UINT uMessage, WPARAM wParam = 0, LPARAM lParam = 0);

// The newest visible window of the kind; null when there is none.
HWND FindSettingsDialog();
HWND FindMessageBox();

std::string MessageText(HWND hwndBox);
// The button that a person would press on a box that only tells something.
int AnswerButton(HWND hwndBox);

// A control's own text without the mark of its access key; a list's is that of the text beside it.
std::string ControlTitle(HWND hwndControl);
