#include "CLoadPictureGDI.h"

#include "HostError.h"
#include "MGlobalVariables.h"

namespace nivarel::output {

std::optional<office::Picture> CLoadPictureGDI::LoadPictureGDI(const std::string& path) const {
  if (!host::ExcelApp) return std::nullopt;
  try {
    return office::Picture::Load(host::ExcelApp->Session(), path);
  } catch (const office::HostError&) {
    return std::nullopt;
  }
}

}  // namespace nivarel::output
