// The print dialog of zorva-print: a printer chooser fed by the CUPS server,
// the standard choices a print dialog offers (copies, collation, pages,
// orientation, paper size from the printer's PPD), presets, and the
// plug-in's pane below them. Changing printer ends the plug-in's session
// (Close, Terminate) and starts a fresh one (Prologue, Initialize, Open), as
// a print dialog does; Print submits the job through CUPS.
#pragma once

#include <QDialog>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "core/print_session.h"
#include "host/pde_interface.h"
#include "paper/ppd.h"

class QCheckBox;
class QComboBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QSpinBox;
class QVBoxLayout;

namespace zorva {

class PreviewPane;

class PrintWindow : public QDialog {
  Q_OBJECT

 public:
  // ops: the plug-in's dialog-extension interface; settings: the job's
  // settings to start from (nullopt: the printer's last used settings).
  PrintWindow(PDEInterfaceTable& ops, std::filesystem::path document,
              std::optional<Ticket> settings);
  ~PrintWindow() override;

  // Fills the printer chooser and opens `printer` (empty: the user's
  // default, else the first). An empty string, or why the dialog cannot run.
  std::string start(const std::string& printer);

  // Submits the job; an empty string, or the one message the user is shown.
  std::string print();

  // "QUEUE-ID" of the job Print submitted.
  const std::string& submittedJob() const { return submitted_; }
  PrintSession* session() { return session_.get(); }
  PreviewPane* preview() { return preview_; }

  // Shows the panels' current settings in the preview: the plug-in saves
  // them into the session first.
  void refreshPreview();

 private:
  std::string openPrinter(const std::string& name, std::optional<Ticket> settings);
  void closePrinter();
  void printerChosen(int index);
  void presetChosen(int index);
  void savePreset();
  void deletePreset();
  void fillPresets();
  void settingsToControls();
  void controlsToSettings();
  void printClicked();
  void pageRangeChanged();

  PDEInterfaceTable& ops_;
  std::filesystem::path document_;
  std::optional<Ticket> initial_;
  PDEContext context_ = nullptr;
  std::unique_ptr<PrintSession> session_;
  PPDPtr ppd_;
  std::vector<PPDPaperSize> papers_;
  std::string submitted_;
  std::vector<std::string> queues_;

  QComboBox* printers_ = nullptr;
  QComboBox* presets_ = nullptr;
  QSpinBox* copies_ = nullptr;
  QCheckBox* collate_ = nullptr;
  QRadioButton* allPages_ = nullptr;
  QRadioButton* somePages_ = nullptr;
  QSpinBox* from_ = nullptr;
  QSpinBox* to_ = nullptr;
  QComboBox* orientation_ = nullptr;
  QComboBox* paper_ = nullptr;
  QVBoxLayout* paneArea_ = nullptr;
  QWidget* pane_ = nullptr;
  QPushButton* printButton_ = nullptr;
  PreviewPane* preview_ = nullptr;
  bool loadingControls_ = false;  // the controls are being filled from the settings
};

}  // namespace zorva
