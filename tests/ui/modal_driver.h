// Helpers for tests of modal windows: a driver that answers each window as
// it comes up (and closes, failing the test, one no step answers), the
// answers a user gives a file dialog or a button, and the job ticket a
// ticket exports.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QFileInfo>
#include <QLineEdit>
#include <QPointer>
#include <QPushButton>
#include <QTimer>
#include <cstdlib>
#include <deque>
#include <functional>
#include <string>

#include "core/ticket.h"
#include "core/ticket_keys.h"
#include "support/finisher.h"

namespace zorva::test {

// Answers the modal windows as they come up, one step per window; a window
// no step closes within ten seconds fails the test and is closed.
class ModalDriver {
 public:
  using Step = std::function<void(QWidget* modal)>;
  explicit ModalDriver(std::deque<Step> steps) : steps_(std::move(steps)) {
    timer_.setInterval(10);
    QObject::connect(&timer_, &QTimer::timeout, [this] { poll(); });
    timer_.start();
    started_.start();
  }
  bool done() const { return steps_.empty(); }

 private:
  void poll() {
    QWidget* modal = QApplication::activeModalWidget();
    // A window no step closes would hold the test for good: close it.
    if (modal && started_.elapsed() > 10000) {
      ADD_FAILURE() << "a window stayed open: " << modal->windowTitle().toStdString();
      if (auto* dialog = qobject_cast<QDialog*>(modal)) dialog->done(QDialog::Rejected);
      return;
    }
    if (!modal || modal == last_ || steps_.empty()) return;
    last_ = modal;
    Step step = std::move(steps_.front());
    steps_.pop_front();
    step(modal);
  }
  std::deque<Step> steps_;
  QTimer timer_;
  QElapsedTimer started_;
  // Cleared when that window goes, so a new one at the same address counts.
  QPointer<QWidget> last_;
};

// Types the file's whole path into the dialog's name field and accepts, as a
// user would: no waiting on the dialog's background folder listing.
inline void ChooseFile(QWidget* modal, const std::string& path) {
  auto* dialog = qobject_cast<QFileDialog*>(modal);
  ASSERT_NE(dialog, nullptr);
  const QFileInfo file(QString::fromStdString(path));
  dialog->setDirectory(file.absolutePath());
  auto* name = dialog->findChild<QLineEdit*>("fileNameEdit");
  ASSERT_NE(name, nullptr);
  name->setText(file.absoluteFilePath());
  ASSERT_EQ(dialog->selectedFiles(), QStringList{file.absoluteFilePath()});
  static_cast<QDialog*>(dialog)->accept();  // QFileDialog hides it
}

inline void Press(QWidget* modal, const char* button) {
  auto* b = modal->findChild<QPushButton*>(button);
  ASSERT_NE(b, nullptr) << button;
  b->click();
}

// Presses once the step is over: for a button that opens a window of its
// own, whose steps the driver can only take after this one returns.
inline void PressLater(QWidget* modal, const char* button) {
  auto* b = modal->findChild<QPushButton*>(button);
  ASSERT_NE(b, nullptr) << button;
  QTimer::singleShot(0, b, &QPushButton::click);
}

// Saves a picture of the window for review when ZORVA_SCREENSHOT_DIR is set.
inline void SavePicture(QWidget* window, const char* name) {
  if (const char* dir = std::getenv("ZORVA_SCREENSHOT_DIR")) {
    // Shown, so lists lay their rows out at the window's size.
    window->show();
    QApplication::processEvents();
    EXPECT_TRUE(window->grab().toImage().save(QString::fromUtf8(dir) + "/" + name));
  }
}

inline bool Has(const std::string& text, const std::string& part) {
  return text.find(part) != std::string::npos;
}

}  // namespace zorva::test
