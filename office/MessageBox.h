// The office's own message box, modal over the spreadsheet window, with the
// buttons and icon that the style asks for. Line breaks in the text are CR LF.
#pragma once

#include <string>

#include "Application.h"

namespace nivarel::office {

// Styles: one button set plus at most one icon.
constexpr int vbOKOnly = 0;
constexpr int vbOKCancel = 1;
constexpr int vbAbortRetryIgnore = 2;
constexpr int vbYesNoCancel = 3;
constexpr int vbYesNo = 4;
constexpr int vbRetryCancel = 5;
constexpr int vbCritical = 16;
constexpr int vbQuestion = 32;
constexpr int vbExclamation = 48;
constexpr int vbInformation = 64;

// Answers.
constexpr int vbOK = 1;
constexpr int vbCancel = 2;
constexpr int vbAbort = 3;
constexpr int vbRetry = 4;
constexpr int vbIgnore = 5;
constexpr int vbYes = 6;
constexpr int vbNo = 7;

// Shows the message over the application's window and waits for the user's
// answer. Throws HostError when the office fails.
int ShowMessageBox(const Application& app, const std::string& prompt, int style, const std::string& title);

}  // namespace nivarel::office
