#include "StatusBarProgress.h"

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/task/XStatusIndicator.hpp>
#include <com/sun/star/task/XStatusIndicatorFactory.hpp>

#include "Uno.h"
#include "Workbook.h"

namespace nivarel::office {

struct StatusBarProgress::State {
  Reference<css::task::XStatusIndicator> indicator;
};

StatusBarProgress::StatusBarProgress(const Application& app, const std::string& text, int range)
    : state_(std::make_unique<State>()) {
  try {
    auto book = app.ActiveWorkbook();
    if (!book) return;
    Reference<css::frame::XModel> model = book->Impl()->Model();
    if (!model.is() || !model->getCurrentController().is()) return;
    Reference<css::task::XStatusIndicatorFactory> factory(model->getCurrentController()->getFrame(), uno::UNO_QUERY);
    if (!factory.is()) return;
    state_->indicator = factory->createStatusIndicator();
    if (state_->indicator.is()) state_->indicator->start(ToOu(text), range);
  } catch (...) {
    state_->indicator.clear();
  }
}

StatusBarProgress::~StatusBarProgress() {
  try {
    if (state_->indicator.is()) state_->indicator->end();
  } catch (...) {
  }
}

void StatusBarProgress::Set(int value) {
  try {
    if (state_->indicator.is()) state_->indicator->setValue(value);
  } catch (...) {
    state_->indicator.clear();
  }
}

}  // namespace nivarel::office
