// The undo list of one workbook, as Ctrl+Z and Ctrl+Y work it. While an Entry
// is open, everything the add-in changes in the workbook becomes one entry of
// the list, named for the user's action; while a Pause lives, nothing is
// recorded at all. Both close however their scope ends.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "Workbook.h"

namespace nivarel::office {

class UndoList {
 public:
  explicit UndoList(const Workbook& book);

  // True while the office undoes or redoes an entry (or anything else holds
  // the list locked): cell changes seen now are the office replaying what
  // was recorded, not the user typing.
  bool Busy() const;
  // The titles of the entries Ctrl+Z would take back, the next one first.
  std::vector<std::string> Titles() const;
  // The titles of the entries Ctrl+Y would do again, the next one first.
  std::vector<std::string> RedoTitles() const;
  void Undo();
  void Redo();
  // Forgets every entry, both ways, as for a workbook just opened.
  void Clear();
  // The office switches its recording back on behind a pause whenever it
  // works on cells itself (a cell changed, a dialog closed, the screen back
  // on): while a pause is held, this switches it off again.
  void HoldPause();

  class Entry {
   public:
    Entry(const Workbook& book, const std::string& title);
    ~Entry();
    Entry(const Entry&) = delete;
    Entry& operator=(const Entry&) = delete;

   private:
    std::shared_ptr<struct WorkbookImpl> book_;
    bool open_ = false;
  };

  // Cells must not change inside a pause: see HoldPause.
  class Pause {
   public:
    explicit Pause(const Workbook& book);
    ~Pause();
    Pause(const Pause&) = delete;
    Pause& operator=(const Pause&) = delete;

   private:
    std::shared_ptr<struct WorkbookImpl> book_;
    bool locked_ = false;
  };

 private:
  std::shared_ptr<struct WorkbookImpl> book_;
};

}  // namespace nivarel::office
