// The text-to-flowchart wizard (" Text to Flowchart Wizard"): the active
// sheet's texts become a flowchart in two steps. Step 1 chooses the texts to
// convert (a list of them, all selected), where the chart goes (a new sheet
// or over the texts) and how it is spaced; step 2 shows a row per chosen text
// with its symbol, style, text and connectors, edited a row at a time, with a
// decision's branch labels and the style pickers. Finish draws the chart as
// one entry of the undo list and hides the gridlines when the settings say
// so; Cancel leaves the sheet as it was. A style given to all symbols, or to
// those of the previous style, is saved as the style of later runs too; the
// flow line style chosen here serves this run.
#pragma once

namespace nivarel::dialogs {

class frmFlowchartWizard {
 public:
  void Display();
};

}  // namespace nivarel::dialogs
