// Message boxes: the office's own message box, modal over the spreadsheet
// window, with the buttons and icon that the style asks for. Line breaks in
// the text are CR LF.
#pragma once

#include <string>

namespace nivarel::host {

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

// The add-in's title, used when a message names none.
extern const char kAppTitle[];
// The office's own name, the title of messages that have none of their own.
extern const char kHostTitle[];

// Shows the message and waits for the user's answer. Without an office to
// show it in, answers vbCancel. Throws HostError when the office fails.
int MsgBox(const std::string& prompt, int style = vbOKOnly, const std::string& title = kAppTitle);

}  // namespace nivarel::host
