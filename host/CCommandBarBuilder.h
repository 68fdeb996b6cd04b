// The add-in's command bar on the road below version 12: one bar "Nivarel"
// built anew at every start, its buttons, popups and the office's own
// commands in the order of the bar, its place kept between sessions of the
// office under "CommandBarSettings", and the enabled state of its buttons,
// which the office's buttons ask for.
#pragma once

#include <set>
#include <string>
#include <vector>

#include "CommandBars.h"

namespace nivarel::host {

class CCommandBarBuilder {
 public:
  // Removes a bar of the same name left behind, builds the bar and puts it
  // where it was last. False when the bar could not be made (logged).
  bool CreateCommandBar(const std::string& barName, const std::string& tag);
  // Deletes the bar of the stored name, if there is one. Never throws.
  void ResetCommandBar();
  void DisableStopButton();
  // Stores the bar's place under "CommandBarSettings"; never throws.
  void StoreCommandBarPosition();
  // Whether the next session of the office shows the extension's own
  // toolbar, which the bar stands in for; never throws.
  void KeepExtensionToolbar(bool shown);
  // Puts the bar where the stored place says, step by step; never throws.
  void RestoreCommandBarPosition();

  // The enabled state of a button of the bar, by its key (its Parameter,
  // compared without case); buttons start enabled.
  bool Enabled(const std::string& key) const;
  void SetEnabled(const std::string& key, bool enabled);
  // The keys of the buttons directly on the bar, in their order.
  std::vector<std::string> BarButtonKeys() const;
  // The command URL of every button of the bar, popups' included.
  std::vector<std::string> CommandUrls() const;

 private:
  using Control = office::CommandBarControl;
  void AddBarButton(const std::string& key, const std::string& caption, const std::string& tooltip, int pictureId,
                    bool beginGroup);
  void AddPopupButton(Control& popup, const std::string& key, const std::string& caption,
                      const std::string& tooltip, int pictureId, bool beginGroup);
  void AddBuiltInButton(Control& popup, int controlId, const std::string& caption, bool beginGroup);
  Control& AddPopup(const std::string& parameter, const std::string& caption, bool beginGroup);
  void AddFlowChartButtons(Control& popup);
  void AddConnectorButtons(Control& popup);
  void AddCalloutButtons(Control& popup);
  void AddMoreShapeButtons(Control& popup);
  void AddHelpPopup();
  void AddDiagramToolsPopup();
  void AddInsertPopup();
  void AddLayoutPopup();

  std::string m_Name;
  std::string m_Tag;
  std::vector<Control> m_Controls;
  std::set<std::string> m_Disabled;  // lower-cased keys
};

}  // namespace nivarel::host
