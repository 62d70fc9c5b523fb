// The dialog's button images: read once from the bundle's resources folder
// and kept while the dialog is open, so reopening a panel costs no file
// reads.
#pragma once

#include <QIcon>
#include <filesystem>
#include <map>
#include <string>
#include <string_view>

namespace zorva {

class ImageManager {
 public:
  explicit ImageManager(std::filesystem::path resources) : resources_(std::move(resources)) {}

  // The image in file `name` of the resources folder; a null icon when the
  // file is missing or is no image. Names leaving the folder are refused.
  QIcon icon(std::string_view name);

 private:
  std::filesystem::path resources_;
  std::map<std::string, QIcon, std::less<>> cache_;
};

}  // namespace zorva
