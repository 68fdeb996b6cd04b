#include "MessageBox.h"

#include <com/sun/star/awt/MessageBoxButtons.hpp>
#include <com/sun/star/awt/MessageBoxResults.hpp>
#include <com/sun/star/awt/MessageBoxType.hpp>
#include <com/sun/star/awt/Toolkit.hpp>
#include <com/sun/star/awt/XMessageBox.hpp>
#include <com/sun/star/awt/XMessageBoxFactory.hpp>
#include <com/sun/star/lang/XComponent.hpp>

#include "Uno.h"

namespace nivarel::office {

namespace {

namespace awt = css::awt;

awt::MessageBoxType TypeFor(int style) {
  switch (style & 0x70) {
    case vbCritical: return awt::MessageBoxType_ERRORBOX;
    case vbQuestion: return awt::MessageBoxType_QUERYBOX;
    case vbExclamation: return awt::MessageBoxType_WARNINGBOX;
    case vbInformation: return awt::MessageBoxType_INFOBOX;
    default: return awt::MessageBoxType_MESSAGEBOX;
  }
}

sal_Int32 ButtonsFor(int style) {
  switch (style & 0x7) {
    case vbOKCancel: return awt::MessageBoxButtons::BUTTONS_OK_CANCEL;
    case vbAbortRetryIgnore: return awt::MessageBoxButtons::BUTTONS_ABORT_IGNORE_RETRY;
    case vbYesNoCancel: return awt::MessageBoxButtons::BUTTONS_YES_NO_CANCEL;
    case vbYesNo: return awt::MessageBoxButtons::BUTTONS_YES_NO;
    case vbRetryCancel: return awt::MessageBoxButtons::BUTTONS_RETRY_CANCEL;
    default: return awt::MessageBoxButtons::BUTTONS_OK;
  }
}

int AnswerFor(sal_Int16 result, int style) {
  switch (result) {
    case awt::MessageBoxResults::OK: return vbOK;
    case awt::MessageBoxResults::YES: return vbYes;
    case awt::MessageBoxResults::NO: return vbNo;
    case awt::MessageBoxResults::RETRY: return vbRetry;
    case awt::MessageBoxResults::IGNORE: return vbIgnore;
    default:
      // Closing a box that has only Abort as its way out answers Abort.
      return (style & 0x7) == vbAbortRetryIgnore ? vbAbort : vbCancel;
  }
}

// The office's boxes break lines at LF; a CR LF pair is one break.
OUString Lines(const std::string& text) {
  std::string out;
  out.reserve(text.size());
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
    out += text[i] == '\r' ? '\n' : text[i];
  }
  return ToOu(out);
}

}  // namespace

int ShowMessageBox(const Application& app, const std::string& prompt, int style, const std::string& title) {
  const HostSession& session = *app.Session();
  return Call("MsgBox", [&] {
    Reference<awt::XMessageBoxFactory> factory(awt::Toolkit::create(session.context), uno::UNO_QUERY_THROW);
    auto box = factory->createMessageBox(OfficeWindowPeer(session), TypeFor(style), ButtonsFor(style),
                                         ToOu(title), Lines(prompt));
    if (!box.is()) throw HostError(HostError::kOfficeFailure, "The office could not show a message");
    sal_Int16 result = box->execute();
    // The box's window goes now, not whenever the last reference does.
    Reference<css::lang::XComponent>(box, uno::UNO_QUERY_THROW)->dispose();
    return AnswerFor(result, style);
  });
}

}  // namespace nivarel::office
