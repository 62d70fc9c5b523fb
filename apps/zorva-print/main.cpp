// zorva-print: the print dialog for Zorva printers. It loads the
// ZorvaFeatures plug-in the way a print dialog does (dlopen, the factory,
// the dialog-extension interface). Given a document (--file) it is a print
// dialog for the CUPS server's printers that prints the job with its job
// ticket; given only a ticket file it edits that ticket: OK lets the panels
// write it and saves it.
#include <dlfcn.h>

#include <QApplication>
#include <QComboBox>
#include <QCommandLineParser>
#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QTimer>
#include <QVBoxLayout>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <optional>
#include <string>

#include "core/bundle.h"
#include "core/print_session.h"
#include "host/pde_interface.h"
#include "preview_pane.h"
#include "print_window.h"

namespace {

using namespace zorva;

constexpr const char* kModuleFile = "ZorvaFeatures.so";

int Fail(const std::string& message) {
  std::fprintf(stderr, "zorva-print: %s\n", message.c_str());
  return 1;
}

// The plug-in as a print dialog holds it: the module, the instance the
// factory made and the interface it answered.
class PlugIn {
 public:
  ~PlugIn() {
    if (intf_) intf_->vtbl->Release(&intf_);
    if (instance_) (*static_cast<IUnknownVTbl**>(instance_))->Release(instance_);
    // The module stays loaded: Qt keeps its widgets' metaobjects.
  }

  // An empty string when loaded, else why not.
  std::string load() {
    const Bundle* bundle = Bundle::FindByIdentifier(kBundleIdentifier);
    if (!bundle) return "the ZorvaFeatures bundle was not found (set ZORVA_BUNDLE_PATH)";
    const std::filesystem::path module = bundle->path() / kModuleFile;
    void* handle = dlopen(module.c_str(), RTLD_NOW | RTLD_LOCAL);
    if (!handle) return std::string("cannot load the plug-in: ") + dlerror();
    using Factory = void* (*)(void*, const UuidBytes*);
    auto factory = reinterpret_cast<Factory>(dlsym(handle, "ZorvaPDEPluginFactory"));
    if (!factory) return "the plug-in has no factory";
    instance_ = factory(nullptr, &kPDETypeID);
    if (!instance_) return "the plug-in's factory made no instance";
    void* intf = nullptr;
    const std::int32_t status = (*static_cast<IUnknownVTbl**>(instance_))
                                    ->QueryInterface(instance_, kPDEInterfaceID, &intf);
    if (status != 0 || !intf) return "the plug-in has no dialog-extension interface";
    intf_ = static_cast<PlugInIntf*>(intf);
    return {};
  }

  PDEInterfaceTable& ops() { return *intf_->vtbl; }

 private:
  void* instance_ = nullptr;
  PlugInIntf* intf_ = nullptr;
};

struct Options {
  std::filesystem::path ticket;
  std::filesystem::path ppd;
  std::filesystem::path screenshots;
  bool pressOK = false;
  // The print dialog: a document, a printer, Print pressed for scripts.
  std::filesystem::path document;
  std::string printer;
  bool pressPrint = false;
  std::filesystem::path screenshot;
  // Started with neither a ticket nor a document (from the desktop's
  // menu): a file chooser asks for the document to print.
  bool chooseDocument = false;
  bool printing() const { return !document.empty(); }
};

// Parsed before the application exists, so --help and mistakes need no
// display. *exitCode is set when the program should end at once.
std::optional<Options> ParseOptions(int argc, char** argv, std::string* error, int* exitCode) {
  QStringList arguments;
  for (int i = 0; i < argc; ++i) arguments << QString::fromLocal8Bit(argv[i]);
  QCommandLineParser parser;
  parser.setApplicationDescription(
      "Sets up a job's print settings in the Zorva features dialog and saves them.");
  const QCommandLineOption help({"h", "help"}, "Displays help on commandline options.");
  const QCommandLineOption version("version", "Displays version information.");
  parser.addOption(help);
  parser.addOption(version);
  const QCommandLineOption ticket("ticket",
                                  "The job ticket (property list) to edit; OK saves it there. A "
                                  "file that does not exist yet starts empty.",
                                  "FILE");
  const QCommandLineOption ppd("ppd", "The printer's PPD file.", "FILE");
  const QCommandLineOption shots("screenshots",
                                 "Save a picture of every panel as DIR/panel-N.png and quit "
                                 "without saving the ticket.",
                                 "DIR");
  const QCommandLineOption ok("ok",
                              "Press OK as soon as the dialog shows: the panels write the ticket "
                              "and it is saved (for scripts).");
  const QCommandLineOption file("file",
                                "Print this PDF document: shows the print dialog for the print "
                                "server's printers (CUPS_SERVER or the user's server).",
                                "PDF");
  const QCommandLineOption printer(
      "printer", "The printer to start with (default: the user's default printer).", "NAME");
  const QCommandLineOption print("print",
                                 "Press Print as soon as the dialog shows; prints the job's id, "
                                 "or one line saying why nothing was printed (for scripts).");
  const QCommandLineOption shot(
      "screenshot", "Save a picture of the print dialog as FILE (PNG) and quit.", "FILE");
  parser.addOptions({ticket, ppd, shots, ok, file, printer, print, shot});
  parser.addPositionalArgument(
      "PDF",
      "The document to print, as --file gives it. Without a document and without --ticket "
      "a file chooser asks for one.",
      "[PDF]");
  if (!parser.parse(arguments)) {
    *error = parser.errorText().toStdString();
    *exitCode = 1;
    return std::nullopt;
  }
  if (parser.isSet(help)) {
    std::fputs(
        parser.helpText().replace("<executable_name>", "zorva-print").toLocal8Bit().constData(),
        stdout);
    *exitCode = 0;
    return std::nullopt;
  }
  if (parser.isSet(version)) {
    std::printf("zorva-print %s\n", ZORVA_VERSION);
    *exitCode = 0;
    return std::nullopt;
  }
  *exitCode = 1;
  const QStringList positional = parser.positionalArguments();
  const qsizetype allowed = parser.isSet(file) ? 0 : 1;
  if (positional.size() > allowed) {
    *error = "unexpected argument \"" + positional.at(allowed).toStdString() + "\"";
    return std::nullopt;
  }
  Options options;
  options.document = (parser.isSet(file) ? parser.value(file) : positional.value(0)).toStdString();
  options.printer = parser.value(printer).toStdString();
  options.pressPrint = parser.isSet(print);
  options.screenshot = parser.value(shot).toStdString();
  if (!options.printing() && (parser.isSet(printer) || parser.isSet(print) || parser.isSet(shot))) {
    *error = "--printer, --print and --screenshot need --file PDF (see --help)";
    return std::nullopt;
  }
  if (!parser.isSet(ticket) && !options.printing()) {
    if (parser.isSet(ok) || parser.isSet(ppd) || parser.isSet(shots)) {
      *error = "--ticket FILE is required (see --help)";
      return std::nullopt;
    }
    options.chooseDocument = true;
  }
  options.ticket = parser.value(ticket).toStdString();
  options.ppd = parser.value(ppd).toStdString();
  options.screenshots = parser.value(shots).toStdString();
  options.pressOK = parser.isSet(ok);
  return options;
}

// Every panel in turn, as the user would pick it from the tab pop-up.
void SavePictures(QWidget& window, QWidget& pane, const std::filesystem::path& folder) {
  auto* tabs = pane.findChild<QComboBox*>("Zshl_16");
  if (!tabs) return;
  std::filesystem::create_directories(folder);
  for (int i = 0; i < tabs->count(); ++i) {
    tabs->setCurrentIndex(i);
    emit tabs->activated(i);
    QApplication::processEvents();
    const std::filesystem::path file = folder / ("panel-" + std::to_string(i + 1) + ".png");
    window.grab().save(QString::fromStdString(file.string()));
  }
}

// The print dialog: runs it, or presses Print or takes its picture.
int RunPrintDialog(PlugIn& plugin, const Options& options, std::optional<Ticket> settings) {
  PrintWindow window(plugin.ops(), options.document, std::move(settings));
  if (std::string error = window.start(options.printer); !error.empty()) return Fail(error);
  if (!options.screenshot.empty()) {
    window.show();
    QApplication::processEvents();
    window.preview()->renderAll();  // the picture shows every sheet drawn
    if (!window.grab().save(QString::fromStdString(options.screenshot.string()))) {
      return Fail("cannot write " + options.screenshot.string());
    }
    return 0;
  }
  if (options.pressPrint) {
    if (std::string error = window.print(); !error.empty()) return Fail(error);
  } else if (window.exec() != QDialog::Accepted) {
    return 0;
  }
  std::printf("%s\n", window.submittedJob().c_str());
  return 0;
}

}  // namespace

int main(int argc, char** argv) {
  std::string error;
  int exitCode = 0;
  std::optional<Options> options = ParseOptions(argc, argv, &error, &exitCode);
  if (!options) return error.empty() ? exitCode : Fail(error);

  PrintSession session("", "", options->ppd);
  std::error_code ec;
  std::optional<Ticket> settings;
  if (!options->ticket.empty() &&
      (options->printing() || std::filesystem::exists(options->ticket, ec))) {
    settings = Ticket::Load(options->ticket, &error);
    if (!settings) return Fail(options->ticket.string() + ": " + error);
    session.printSettings() = *settings;
  }
  if (!options->ppd.empty() && !std::filesystem::is_regular_file(options->ppd, ec)) {
    return Fail("cannot read the PPD " + options->ppd.string());
  }

  QApplication app(argc, argv);
  QApplication::setApplicationName("zorva-print");
  PlugIn plugin;
  if (error = plugin.load(); !error.empty()) return Fail(error);
  if (options->chooseDocument) {
    const QString chosen = QFileDialog::getOpenFileName(
        nullptr, QStringLiteral("Print a PDF Document"), QDir::homePath(),
        QStringLiteral("PDF documents (*.pdf);;All files (*)"));
    if (chosen.isEmpty()) return 0;
    options->document = chosen.toStdString();
  }
  if (options->printing()) return RunPrintDialog(plugin, *options, std::move(settings));
  PDEInterfaceTable& ops = plugin.ops();
  PDEContext context = nullptr;
  std::uint32_t creator = 0;
  const char* kind = nullptr;
  const char* title = nullptr;
  float maxH = 0;
  float maxV = 0;
  if (ops.Prologue(&context, &creator, &kind, &title, &maxH, &maxV) != kNoErr) {
    return Fail("the plug-in could not be set up");
  }

  QDialog dialog;
  dialog.setWindowTitle(title ? QString::fromUtf8(title) : QStringLiteral("Zorva"));
  auto* layout = new QVBoxLayout(&dialog);
  auto* pane = new QWidget(&dialog);
  pane->setMinimumSize(static_cast<int>(maxH), static_cast<int>(maxV));
  layout->addWidget(pane);
  auto* buttons = new QDialogButtonBox(
      QDialogButtonBox::Ok | QDialogButtonBox::Cancel | QDialogButtonBox::Help, &dialog);
  layout->addWidget(buttons);
  QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
  QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);

  std::uint32_t flags = 0;
  int result = 0;
  if (ops.Initialize(context, &flags, nullptr, pane, &session) != kNoErr ||
      ops.Open(context) != kNoErr) {
    result = Fail("the plug-in's panels could not be shown");
  } else if (!options->screenshots.empty()) {
    dialog.show();
    SavePictures(dialog, *pane, options->screenshots);
    ops.Close(context);
  } else {
    if (options->pressOK) QTimer::singleShot(0, &dialog, &QDialog::accept);
    const bool accepted = dialog.exec() == QDialog::Accepted;
    if (accepted) ops.Sync(context, &session, false);
    ops.Close(context);
    if (accepted) {
      if (const int err = session.printSettings().save(options->ticket); err != 0) {
        result = Fail("cannot write " + options->ticket.string() + ": " + std::strerror(err));
      }
    }
  }
  ops.Terminate(context, kNoErr);
  return result;
}
