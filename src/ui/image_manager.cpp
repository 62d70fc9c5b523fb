// Button images from the bundle, cached by file name.
#include "ui/image_manager.h"

#include <QPixmap>
#include <QString>

namespace zorva {

QIcon ImageManager::icon(std::string_view name) {
  if (auto found = cache_.find(name); found != cache_.end()) return found->second;
  QIcon image;
  if (!name.empty() && name.find('/') == std::string_view::npos && name != "..") {
    const QPixmap pixmap(QString::fromStdString((resources_ / name).string()));
    if (!pixmap.isNull()) image = QIcon(pixmap);
  }
  cache_.emplace(std::string(name), image);
  return image;
}

}  // namespace zorva
