// Default Styles on a sheet a user has worked on: every symbol, label, flow
// line and plain line takes the look the settings give a new one, read back
// as the office draws it; the user's groups come back whole, the flowchart
// key, a template's groups and group boxes keep their look; the menu command
// is one entry of the undo list.
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <stdexcept>

#include "AddinFixture.h"
#include "CEventHandler.h"
#include "MsoConstants.h"
#include "Range.h"
#include "Shapes.h"
#include "UndoList.h"

namespace nivarel {
namespace {

using namespace office;
using Names = std::vector<std::string>;

constexpr long Rgb(int r, int g, int b) { return r | (g << 8) | (b << 16); }
constexpr long kWhite = Rgb(255, 255, 255), kBlack = Rgb(0, 0, 0), kRed = Rgb(255, 0, 0), kGreen = Rgb(0, 160, 0);
// Symbol style 2, the shipped style of every symbol: a blue outline on white.
constexpr long kStyle2Line = Rgb(79, 129, 189);
// Symbol style 10: a darker red outline on red.
constexpr long kStyle10Line = Rgb(140, 56, 54), kStyle10Fill = Rgb(192, 80, 77);
// Flow line style 9, the shipped FlowLineStyle: 2 points in the second colour.
constexpr long kLineStyle9 = Rgb(74, 126, 187);

class DefaultStylesTest : public testing::AddinFixture {
 protected:
  void SetUp() override {
    AddinFixture::SetUp();
    // The shipped settings, with the decision symbol given style 10 in the
    // rules file, so that each symbol's own style shows.
    const std::string folder = testing::ConfigHome() + "/default-styles";
    const std::string nivarel = folder + "/Tamrisk/Nivarel";
    std::filesystem::create_directories(nivarel);
    std::ifstream in(NIVAREL_SOURCE_DIR "/extension/symbols.ini");
    std::stringstream rules;
    rules << in.rdbuf();
    std::string text = rules.str();
    size_t decision = text.find("[Shape 63]");
    ASSERT_NE(std::string::npos, decision);
    size_t style = text.find("style_id=2", decision);
    ASSERT_NE(std::string::npos, style);
    text.replace(style, 10, "style_id=10");
    std::ofstream(nivarel + "/symbols.ini") << text;
    folder_ = std::make_unique<testing::SettingsFolder>(folder);
    host::ClearLogFile();  // the log lives in the settings folder
  }
  void TearDown() override {
    folder_.reset();
    seen_.clear();
    AddinFixture::TearDown();
  }

  // A symbol with a word of text in a large font, in a look no setting gives:
  // green on red.
  Shape OffLook(int type, const std::string& name) {
    Shape s = sheet_->GetShapes().AddShape(type, 20 + 100 * (count_ % 6), 20 + 70 * (count_ / 6), 80, 40);
    ++count_;
    s.SetName(name);
    s.GetTextFrame().GetCharacters().SetText("Pack");
    s.GetTextFrame().GetCharacters().GetFont().SetSize(20);
    s.Fill().ForeColor().SetRGB(kRed);
    s.Line().ForeColor().SetRGB(kGreen);
    return Kept(s);
  }
  Shape Group(const Names& members, const std::string& name) {
    Shape g = sheet_->GetShapes().GetRange(members).Group();
    g.SetName(name);
    return Kept(g);
  }
  // Every handle a test fetches is kept until it ends: a shape fetched again
  // from the office right after its last handle went can come back as a dead
  // copy, a fault of the connection.
  Shape Kept(Shape shape) {
    seen_.push_back(shape);
    return shape;
  }
  Names MembersOf(const Shape& group) {
    Names names;
    for (const Shape& m : group.GroupItems()) names.push_back(Kept(m).Name());
    std::sort(names.begin(), names.end());
    return names;
  }
  // The members' names of the top-level group of this name, sorted; empty
  // when there is no such group.
  Names Members(const std::string& group) {
    Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape s = Kept(shapes.Item(i));
      if (s.Name() == group && s.Type() == msoGroup) return MembersOf(s);
    }
    return {};
  }
  // The shape of this name as the sheet holds it now, found by a walk
  // through the sheet and its groups.
  Shape Named(const std::string& name) {
    std::vector<Shape> pending;
    Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) pending.push_back(Kept(shapes.Item(i)));
    while (!pending.empty()) {
      Shape s = pending.back();
      pending.pop_back();
      if (s.Name() == name) return s;
      if (s.Type() == msoGroup)
        for (const Shape& m : s.GroupItems()) pending.push_back(Kept(m));
    }
    throw std::runtime_error("no shape named " + name);
  }
  long Fill(const std::string& name) { return Named(name).Fill().ForeColor().RGB(); }
  long Outline(const std::string& name) { return Named(name).Line().ForeColor().RGB(); }

  host::CEventHandler handler_;
  std::unique_ptr<testing::SettingsFolder> folder_;

 private:
  int count_ = 0;
  std::vector<Shape> seen_;
};

TEST_F(DefaultStylesTest, EachKindOfShapeTakesTheLookOfTheSettings) {
  Shapes shapes = sheet_->GetShapes();
  Shape process = OffLook(msoShapeFlowchartProcess, "Process");
  Shape decision = OffLook(msoShapeFlowchartDecision, "Decision");
  Shape rectangle = OffLook(msoShapeRectangle, "Rectangle");
  Shape callout = OffLook(105, "Callout");
  Shape button = OffLook(126, "Button");  // beyond the symbols' shape types
  Shape box = OffLook(msoShapeRectangle, "Group_Box_1");

  Shape connector = shapes.AddConnector(msoConnectorStraight, 0, 0, 10, 10);
  connector.GetConnectorFormat().BeginConnect(process, 3);
  connector.GetConnectorFormat().EndConnect(decision, 1);
  connector.Line().ForeColor().SetRGB(kRed);
  connector.Line().SetWeight(0.5);
  connector.Line().SetEndArrowheadStyle(msoArrowheadNone);
  Shape line = shapes.AddLine(20, 300, 200, 300);
  line.Line().ForeColor().SetRGB(kRed);
  line.Line().SetWeight(0.5);

  Shape label = shapes.AddTextbox(msoTextOrientationHorizontal, 300, 300, 80, 20);
  label.GetTextFrame().GetCharacters().SetText("Note");
  label.GetTextFrame().GetCharacters().GetFont().SetColor(kRed);
  label.GetTextFrame().GetCharacters().GetFont().SetName("Liberation Mono");
  label.Line().SetVisible(true);
  label.ZOrder(msoSendToBack);
  const int count = shapes.Count();

  handler_.ApplyStyles();

  EXPECT_EQ(count, shapes.Count());
  // Symbols: their own style from the rules file, the settings' font.
  for (const Shape* s : {&process, &rectangle, &callout}) {
    SCOPED_TRACE(s->Name());
    EXPECT_EQ(kWhite, s->Fill().ForeColor().RGB());
    EXPECT_EQ(kStyle2Line, s->Line().ForeColor().RGB());
    EXPECT_DOUBLE_EQ(8, s->GetTextFrame().GetCharacters().GetFont().Size());
    EXPECT_EQ("Tahoma", s->GetTextFrame().GetCharacters().GetFont().Name());
  }
  EXPECT_EQ(kStyle10Fill, decision.Fill().ForeColor().RGB());
  EXPECT_EQ(kStyle10Line, decision.Line().ForeColor().RGB());

  // A shape no symbol is made of, and a group box in any letter case, are left as they were.
  for (const Shape* s : {&button, &box}) {
    SCOPED_TRACE(s->Name());
    EXPECT_EQ(kRed, s->Fill().ForeColor().RGB());
    EXPECT_EQ(kGreen, s->Line().ForeColor().RGB());
    EXPECT_DOUBLE_EQ(20, s->GetTextFrame().GetCharacters().GetFont().Size());
  }

  // Flow lines and plain lines: the flow line style; a line without an
  // arrowhead is not given one, as only new lines are.
  for (const Shape* s : {&connector, &line}) {
    SCOPED_TRACE(s->Name());
    EXPECT_EQ(kLineStyle9, s->Line().ForeColor().RGB());
    EXPECT_DOUBLE_EQ(2, s->Line().Weight());
  }
  EXPECT_EQ(msoArrowheadNone, connector.Line().EndArrowheadStyle());
  EXPECT_TRUE(connector.GetConnectorFormat().BeginConnected()) << "the line stays glued";

  // The label: the branch colour, the shape font (BranchesUseDefaultFont), no
  // outline, in front of the rest.
  EXPECT_EQ(kBlack, label.GetTextFrame().GetCharacters().GetFont().Color());
  EXPECT_EQ("Tahoma", label.GetTextFrame().GetCharacters().GetFont().Name());
  EXPECT_FALSE(label.Line().Visible());
  EXPECT_EQ(count, label.ZOrderPosition());
  EXPECT_EQ("", host::ReadLogFile());
}

TEST_F(DefaultStylesTest, UserGroupsAreStyledAndComeBackWholeTheKeyAndTemplatesAreLeftAlone) {
  Shapes shapes = sheet_->GetShapes();
  for (const char* name : {"Ship", "Bill", "Pick", "Pack", "Wrap", "KeyA", "KeyB", "LaneA", "LaneB"})
    OffLook(msoShapeFlowchartProcess, name);
  Group({"Ship", "Bill"}, "Order group");
  // A group inside a group of the user's.
  Group({"Pick", "Pack"}, "Inner");
  Group({"Inner", "Wrap"}, "Outer");
  Group({"KeyA", "KeyB"}, "Flowchart Key");
  Group({"LaneA", "LaneB"}, "TEMPLATE_GROUP_1");
  const int count = shapes.Count();
  ASSERT_EQ(4, count);

  handler_.ApplyStyles();

  EXPECT_EQ(count, shapes.Count()) << "every group closed again";
  EXPECT_EQ((Names{"Bill", "Ship"}), Members("Order group"));
  EXPECT_EQ((Names{"Inner", "Wrap"}), Members("Outer"));
  Shape inner = Named("Inner");
  EXPECT_EQ(msoGroup, inner.Type());
  EXPECT_EQ((Names{"Pack", "Pick"}), MembersOf(inner));
  for (const char* name : {"Ship", "Bill", "Pick", "Pack", "Wrap"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(kWhite, Fill(name));
    EXPECT_EQ(kStyle2Line, Outline(name));
  }

  EXPECT_EQ((Names{"KeyA", "KeyB"}), Members("Flowchart Key"));
  EXPECT_EQ((Names{"LaneA", "LaneB"}), Members("TEMPLATE_GROUP_1"));
  for (const char* name : {"KeyA", "KeyB", "LaneA", "LaneB"}) {
    SCOPED_TRACE(name);
    EXPECT_EQ(kRed, Fill(name));
    EXPECT_EQ(kGreen, Outline(name));
  }
  EXPECT_EQ("", host::ReadLogFile());
}

// From the menu, inside the office, with the shipped settings, on shapes as
// a user draws them by hand: without names.
TEST_F(DefaultStylesTest, TheMenuCommandIsOneUndoEntryThatCtrlZTakesBackWhole) {
  folder_.reset();
  host::ClearLogFile();  // the office's
  for (const char* name : {"A", "B", "C", "Pack"}) OffLook(msoShapeFlowchartProcess, name);
  Group({"A", "B"}, "Inner");
  Group({"Inner", "C"}, "Outer");
  for (const char* name : {"A", "B", "C", "Inner", "Outer"}) Named(name).SetName("");
  // A label at the back, which the command brings to the front.
  Shape label = Kept(sheet_->GetShapes().AddTextbox(msoTextOrientationHorizontal, 300, 300, 80, 20));
  label.SetName("Note");
  label.GetTextFrame().GetCharacters().SetText("Note");
  label.GetTextFrame().GetCharacters().GetFont().SetColor(kRed);
  label.ZOrder(msoSendToBack);

  // The fills of the three symbols in the hand-drawn groups, inner ones
  // first; empty when the groups are not as they were drawn.
  auto handDrawn = [&] {
    std::vector<long> fills;
    Shapes shapes = sheet_->GetShapes();
    for (int i = 1; i <= shapes.Count(); ++i) {
      Shape outer = Kept(shapes.Item(i));
      if (outer.Type() != msoGroup) continue;
      std::vector<Shape> members = outer.GroupItems();
      if (members.size() != 2 || members[0].Type() != msoGroup || members[0].GroupItems().size() != 2) return fills;
      for (const Shape& s : members[0].GroupItems()) fills.push_back(Kept(s).Fill().ForeColor().RGB());
      fills.push_back(Kept(members[1]).Fill().ForeColor().RGB());
    }
    return fills;
  };
  auto labelAt = [&](long colour, int place) {
    Shape note = Named("Note");
    return note.GetTextFrame().GetCharacters().GetFont().Color() == colour && note.ZOrderPosition() == place;
  };
  auto styled = [&] {
    return handDrawn() == std::vector<long>(3, kWhite) && Fill("Pack") == kWhite && Outline("Pack") == kStyle2Line &&
           labelAt(kBlack, 3);
  };
  auto asBefore = [&] {
    return handDrawn() == std::vector<long>(3, kRed) && Fill("Pack") == kRed && Outline("Pack") == kGreen &&
           labelAt(kRed, 1);
  };
  ASSERT_TRUE(asBefore());
  UndoList undo(*book_);
  const size_t entries = undo.Titles().size();

  Ui().RunCommand("vnd.nivarel:rxNivarelApplyStyles");
  EXPECT_TRUE(styled()) << "the groups come back whole, their symbols styled";
  ASSERT_EQ(entries + 1, undo.Titles().size()) << "one entry";
  EXPECT_EQ("Nivarel: Default Styles", undo.Titles()[0]);

  // Back and forth: each press is the whole command.
  for (int round = 0; round < 3; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    Ui().PressKey("CTRL+z");
    EXPECT_TRUE(asBefore()) << "Ctrl+Z brings the former looks and stacking back";
    EXPECT_EQ(entries, undo.Titles().size());
    Ui().PressKey("CTRL+y");
    EXPECT_TRUE(styled()) << "Ctrl+Y styles them again";
  }
  Ui().PressKey("CTRL+z");
  EXPECT_TRUE(asBefore());

  // The office goes on working.
  Ui().TypeIntoCell("H20", "still here");
  EXPECT_EQ("still here", sheet_->GetRange("H20").Value());
  EXPECT_EQ(3, sheet_->GetShapes().Count()) << "the groups, the single symbol and the label";
  EXPECT_EQ("", host::ReadLogFile());
}

}  // namespace
}  // namespace nivarel
