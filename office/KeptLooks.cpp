#include "KeptLooks.h"

#include <map>

#include <com/sun/star/document/XUndoAction.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <cppuhelper/implbase1.hxx>

#include "Border.h"
#include "ShapeRecipe.h"
#include "Uno.h"

namespace nivarel::office {

namespace {

using Looks = std::map<OUString, Recipe>;

// Every named shape that is not a group, by name.
std::map<OUString, Reference<css::drawing::XShape>> NamedShapes(const SheetRef& sheet) {
  std::vector<Reference<css::drawing::XShape>> all;
  CollectShapes(Reference<css::drawing::XShapes>(sheet.Page(), uno::UNO_QUERY_THROW), all);
  std::map<OUString, Reference<css::drawing::XShape>> named;
  for (const auto& s : all) {
    if (s->getShapeType().equalsAscii(kGroupShape)) continue;
    OUString name = NameOf(s);
    if (!name.isEmpty()) named.emplace(name, s);
  }
  return named;
}

Looks LooksOf(const SheetRef& sheet) {
  Looks looks;
  for (const auto& [name, shape] : NamedShapes(sheet)) looks.emplace(name, Describe(shape));
  return looks;
}

class LooksAction : public cppu::WeakImplHelper1<css::document::XUndoAction> {
 public:
  LooksAction(std::shared_ptr<SheetRef> sheet, Looks before, Looks after)
      : sheet_(std::move(sheet)), before_(std::move(before)), after_(std::move(after)) {}

  OUString SAL_CALL getTitle() override { return "Looks"; }
  void SAL_CALL undo() override {
    OfficeThreadScope scope;
    AtBorder("KeptLooks", "Undo", [&] { Give(before_); });
  }
  void SAL_CALL redo() override {
    OfficeThreadScope scope;
    AtBorder("KeptLooks", "Redo", [&] { Give(after_); });
  }

 private:
  void Give(const Looks& looks) {
    UnrecordedUndo unrecorded(sheet_->document);
    for (const auto& [name, shape] : NamedShapes(*sheet_)) {
      auto look = looks.find(name);
      if (look != looks.end()) GiveLook(shape, look->second);
    }
  }

  std::shared_ptr<SheetRef> sheet_;
  Looks before_, after_;
};

}  // namespace

struct KeptLooks::State {
  std::shared_ptr<SheetRef> sheet;
  Looks before;
};

KeptLooks::KeptLooks(const Worksheet& sheet) : state_(std::make_unique<State>()) {
  state_->sheet = sheet.Ref();
  Call("KeptLooks", [&] { state_->before = LooksOf(*state_->sheet); });
}

KeptLooks::~KeptLooks() {
  try {
    Call("KeptLooks", [&] {
      Looks after = LooksOf(*state_->sheet);
      ManagerOf(state_->sheet->document)
          ->addUndoAction(new LooksAction(state_->sheet, std::move(state_->before), std::move(after)));
    });
  } catch (...) {
    // Without the action, Ctrl+Z leaves the looks as they are now.
  }
}

}  // namespace nivarel::office
