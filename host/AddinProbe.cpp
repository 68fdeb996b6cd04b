#include "AddinProbe.h"

#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/task/theJobExecutor.hpp>
#include <com/sun/star/util/URLTransformer.hpp>

#include "Uno.h"

namespace nivarel::host {

bool CanDispatch(const Application& app, const std::string& url) {
  const HostSession& s = *app.Session();
  return Call("CanDispatch", [&] {
    css::util::URL parsed;
    parsed.Complete = ToOu(url);
    css::util::URLTransformer::create(s.context)->parseStrict(parsed);
    Reference<css::frame::XDispatchProvider> provider(s.desktop, uno::UNO_QUERY_THROW);
    Reference<css::frame::XModel> model(s.desktop->getCurrentComponent(), uno::UNO_QUERY);
    if (model.is() && model->getCurrentController().is()) {
      Reference<css::frame::XDispatchProvider> frame(model->getCurrentController()->getFrame(), uno::UNO_QUERY);
      if (frame.is()) provider = frame;
    }
    return provider->queryDispatch(parsed, "", 0).is();
  });
}

void FireJobEvent(const Application& app, const std::string& event) {
  Call("FireJobEvent", [&] { css::task::theJobExecutor::get(app.Session()->context)->trigger(ToOu(event)); });
}

}  // namespace nivarel::host
