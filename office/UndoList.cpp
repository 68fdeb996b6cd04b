#include "UndoList.h"

#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/util/NotLockedException.hpp>

#include "Uno.h"

namespace nivarel::office {

namespace {

Reference<css::document::XUndoManager> ManagerOf(const WorkbookImpl& book) {
  Reference<css::document::XUndoManagerSupplier> supplier(book.document, uno::UNO_QUERY_THROW);
  return supplier->getUndoManager();
}

}  // namespace

UndoList::UndoList(const Workbook& book) : book_(book.Impl()) {}

bool UndoList::Busy() const {
  return Call("UndoList.Busy", [&] { return static_cast<bool>(ManagerOf(*book_)->isLocked()); });
}

std::vector<std::string> UndoList::Titles() const {
  return Call("UndoList.Titles", [&] {
    std::vector<std::string> out;
    for (const auto& title : ManagerOf(*book_)->getAllUndoActionTitles()) out.push_back(ToUtf8(title));
    return out;
  });
}

std::vector<std::string> UndoList::RedoTitles() const {
  return Call("UndoList.RedoTitles", [&] {
    std::vector<std::string> out;
    for (const auto& title : ManagerOf(*book_)->getAllRedoActionTitles()) out.push_back(ToUtf8(title));
    return out;
  });
}

void UndoList::Undo() {
  Call("UndoList.Undo", [&] { ManagerOf(*book_)->undo(); });
}

void UndoList::Redo() {
  Call("UndoList.Redo", [&] { ManagerOf(*book_)->redo(); });
}

void UndoList::Clear() {
  Call("UndoList.Clear", [&] { ManagerOf(*book_)->clear(); });
}

void KeepUndoListLocked(const Reference<css::document::XUndoManager>& manager, int& taken) {
  if (manager->isLocked()) return;
  // Undone to no lock and done again: the office switches recording off on
  // the first lock only.
  int held = 0;
  try {
    for (;; ++held) manager->unlock();
  } catch (const css::util::NotLockedException&) {
  }
  if (held == 0) {
    ++taken;
    held = 1;
  }
  for (int i = 0; i < held; ++i) manager->lock();
}

void UndoList::HoldPause() {
  Call("UndoList.Pause", [&] {
    auto manager = ManagerOf(*book_);
    int taken = 0;
    KeepUndoListLocked(manager, taken);
    // With no pause held there was nothing to hold.
    for (; taken > 0; --taken) manager->unlock();
  });
}

UndoList::Entry::Entry(const Workbook& book, const std::string& title) : book_(book.Impl()) {
  Call("UndoList.Entry", [&] { ManagerOf(*book_)->enterUndoContext(ToOu(title)); });
  open_ = true;
}

UndoList::Entry::~Entry() {
  // A context left open would swallow the user's next edits into this entry.
  if (!open_) return;
  try {
    Call("UndoList.Entry", [&] { ManagerOf(*book_)->leaveUndoContext(); });
  } catch (...) {
  }
}

UndoList::Pause::Pause(const Workbook& book) : book_(book.Impl()) {
  Call("UndoList.Pause", [&] { ManagerOf(*book_)->lock(); });
  locked_ = true;
  UndoList(Workbook(book_)).HoldPause();
}

UndoList::Pause::~Pause() {
  if (!locked_) return;
  try {
    Call("UndoList.Pause", [&] { ManagerOf(*book_)->unlock(); });
  } catch (...) {
  }
}

}  // namespace nivarel::office
