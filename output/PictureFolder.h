// The folder a picture store reads its PNG files from (by default the
// installed extension's "pictures"): a file's path when it is there, else an
// empty picture and, the first time only, a line in the error log under the
// store's name.
#pragma once

#include <functional>
#include <string>
#include <vector>

namespace nivarel::output {

class PictureFolder {
 public:
  PictureFolder(std::string folder, std::string store);

  const std::string& Folder() const { return folder_; }
  // The path of fileName inside the folder, or "" when it is missing.
  std::string Path(const std::string& fileName) const;
  // The paths of fileName(first) to fileName(last), in order.
  std::vector<std::string> List(int first, int last, const std::function<std::string(int, bool)>& fileName) const;

 private:
  std::string folder_;
  std::string store_;
  mutable bool logged_ = false;
};

}  // namespace nivarel::output
