// A large Mermaid flowchart of an order process, the same text every time,
// for the tests and the bench that import it. A start terminator, then the
// main flow of steps down to an end terminator; decisions spread evenly
// along it, each one's -->|Yes| edge going on with the main flow and its
// -->|No| edge into a branch of one to four steps that joins the main flow
// again one or two steps further on, except every tenth decision from the
// fifth, whose branch loops back to the step two before it. Some steps are
// data, predefined-process or stored-data symbols, and some texts are long
// enough to wrap to two or three lines. Every text names its node's number,
// so no two nodes share a text.
#pragma once

#include <string>
#include <vector>

namespace nivarel::testing {

// The Mermaid text of a chart of nodes nodes in all, decisions of them
// decisions. The main flow needs room for the decisions: what is left of
// nodes after the branches (two and a half steps a decision) must hold six
// steps a decision, as 200 nodes with 20 decisions do.
inline std::string MermaidSample(int nodes = 200, int decisions = 20) {
  auto branchLength = [](int d) { return 1 + (d * 3) % 4; };  // 1, 4, 3, 2, 1, ...
  auto loops = [](int d) { return d % 10 == 4; };
  int branched = 0;
  for (int d = 0; d < decisions; ++d) branched += branchLength(d);
  const int main = nodes - branched;  // start, steps, decisions, end
  const int inner = main - 2;

  // Where each decision stands on the main flow, by its index there.
  std::vector<int> decisionAt(static_cast<size_t>(main), -1);
  for (int d = 0; d < decisions; ++d) decisionAt[static_cast<size_t>(1 + d * inner / decisions + 3)] = d;

  static const char* const kSteps[] = {
      "Receive order {n}",
      "Enter order {n} in the order system",
      "Check order {n} against the stock list before passing it on to the warehouse team",
      "Reserve the stock for order {n}",
      "Pick the items of order {n}",
      "Pack order {n}",
      "Print the invoice and the delivery note for order {n} and put both into the parcel with the goods",
      "Book a carrier for order {n}",
      "Update the ledger for order {n}",
      "Send the customer of order {n} a confirmation with the expected delivery date"};
  static const char* const kQuestions[] = {"Is order {n} complete?", "Is the customer of order {n} known?",
                                           "Are all items of order {n} in stock?", "Is the payment for order {n} cleared?",
                                           "Is order {n} packed correctly?"};
  static const char* const kBranchSteps[] = {
      "Ask the customer about order {n}", "Wait for the answer on order {n}",
      "Correct the details of order {n} in the order system and note the reason for the change",
      "Tell the sales team about order {n}"};
  auto text = [](const char* pattern, int n) {
    std::string s = pattern;
    return s.replace(s.find("{n}"), 3, std::to_string(n));
  };
  auto id = [](int n) { return "N" + std::to_string(n); };

  std::string declared, edges;
  std::vector<int> mainNode(static_cast<size_t>(main));     // node number by main-flow index
  std::vector<std::vector<int>> branch(static_cast<size_t>(decisions));  // node numbers of each No branch
  int n = 0, plain = 0;
  for (int k = 0; k < main; ++k) {
    mainNode[static_cast<size_t>(k)] = ++n;
    int d = decisionAt[static_cast<size_t>(k)];
    std::string node;
    if (k == 0)
      node = "([\"Start\"])";
    else if (k == main - 1)
      node = "([\"End\"])";
    else if (d >= 0)
      node = "{\"" + text(kQuestions[d % 5], n) + "\"}";
    else {
      int j = plain++;
      if (j % 9 == 4)
        node = "[/\"" + text("Read the customer file of order {n}", n) + "\"/]";
      else if (j % 13 == 6)
        node = "[[\"" + text("Run the credit check for order {n}", n) + "\"]]";
      else if (j % 16 == 10)
        node = "[(\"" + text("Archive order {n} in the records store", n) + "\")]";
      else
        node = "[\"" + text(kSteps[j % 10], n) + "\"]";
    }
    declared += "    " + id(n) + node + "\n";
    if (d < 0) continue;
    for (int b = 0; b < branchLength(d); ++b) {
      branch[static_cast<size_t>(d)].push_back(++n);
      declared += "    " + id(n) + "[\"" + text(kBranchSteps[(d + b) % 4], n) + "\"]\n";
    }
  }
  for (int k = 0; k + 1 < main; ++k) {
    int d = decisionAt[static_cast<size_t>(k)];
    std::string from = id(mainNode[static_cast<size_t>(k)]), next = id(mainNode[static_cast<size_t>(k + 1)]);
    if (d < 0) {
      edges += "    " + from + " --> " + next + "\n";
      continue;
    }
    edges += "    " + from + " -->|Yes| " + next + "\n";
    std::string at = from, label = "|No| ";
    for (int b : branch[static_cast<size_t>(d)]) {
      edges += "    " + at + " -->" + label + id(b) + "\n";
      at = id(b), label = " ";
    }
    int rejoin = loops(d) ? k - 2 : k + 2 + d % 2;
    edges += "    " + at + " --> " + id(mainNode[static_cast<size_t>(rejoin)]) + "\n";
  }
  return "flowchart TD\n" + declared + edges;
}

}  // namespace nivarel::testing
