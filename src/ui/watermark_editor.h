// The watermark editor: a text watermark in any installed TrueType font, or
// a picture, with size, angle, density, scale, position and colours, drawn
// live on a small page as the user edits. Saving stores the record (and the
// text's font) in the watermark store and keeps the menu's list in step.
#pragma once

#include <QFont>
#include <QString>
#include <QWidget>
#include <optional>
#include <string>

#include "watermarks/watermark_store.h"

namespace zorva {

class Bundle;

// Draws a record on a letter-size page scaled to the widget.
class WatermarkPreview : public QWidget {
 public:
  explicit WatermarkPreview(QWidget* parent = nullptr);
  void setRecord(const WatermarkData& record);
  const WatermarkData& record() const { return record_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  QFont watermarkFont(double pixelSize) const;
  WatermarkData record_;
  QString family_;  // the record's font as Qt knows it
  QString style_;
};

// Edits `record` (a new one when name is empty) modally. On Save the record
// is stored under its name, a text's font with it, and the list renamed or
// extended; the saved name is returned. Cancel gives nullopt.
std::optional<std::string> RunModalWatermarkEditor(const Bundle* bundle, QWidget* parent,
                                                   const WatermarkData& record);

}  // namespace zorva
