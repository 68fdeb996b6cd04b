// The fixture of tests that run the add-in's own objects in this process
// against the shared office: the office is the add-in's ExcelApp on the
// object model of version 12, with an empty error log, and the road below
// version 12 can be taken for one test.
#pragma once

#include <stdlib.h>

#include "Application.h"
#include "MErrorHandler.h"
#include "MGlobalVariables.h"
#include "OfficeTest.h"

namespace nivarel::testing {

class AddinFixture : public OfficeTest {
 protected:
  void SetUp() override {
    OfficeTest::SetUp();
    host::ExcelApp = App();
    host::ExcelVersion = 12;
    host::ClearLogFile();
  }
  void TearDown() override {
    if (belowVersion12_) host::Application restored(App().Session());  // made without the switch
    host::ExcelVersion = 12;
    host::ExcelApp.reset();
    OfficeTest::TearDown();
  }

  // The office offers the object model of version 11 until the test ends.
  void TakeTheRoadBelowVersion12() {
    setenv("NIVAREL_OBJECT_MODEL", "11", 1);
    host::Application old(App().Session());
    unsetenv("NIVAREL_OBJECT_MODEL");
    ASSERT_EQ("11.0", old.Version());
    host::ExcelVersion = 11;
    belowVersion12_ = true;
  }

 private:
  bool belowVersion12_ = false;
};

}  // namespace nivarel::testing
