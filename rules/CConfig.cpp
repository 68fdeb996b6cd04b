#include "CConfig.h"

#include "CIniDataAccess.h"
#include "MErrorHandler.h"

namespace nivarel::rules {

void CConfig::LoadConfigData() {
  IsGrid = true;
  LoadTemplate = false;
  BlockDiagram = false;
  try {
    CIniDataAccess access;
    access.ReadConfigData(*this);
  } catch (...) {
    host::ErrorHandler("CConfig", "LoadConfigData", true);
  }
}

void CConfig::StoreConfigData() {
  try {
    CIniDataAccess access;
    access.SaveConfigData(*this);
  } catch (...) {
    host::ErrorHandler("CConfig", "StoreConfigData", false);
  }
}

}  // namespace nivarel::rules
