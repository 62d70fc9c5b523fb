// zorva watermarks: look at and tidy the user's stored watermarks from the
// shell: the menu list, every field of one watermark, the three defaults a
// new store starts with, removing one, and applying one to a PostScript file
// exactly as the printer's filter does.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <iostream>
#include <memory>
#include <string>
#include <vector>

#include "cli/cli_support.h"
#include "cli/commands.h"
#include "cli/value_text.h"
#include "core/bundle.h"
#include "core/file_io.h"
#include "host/preferences.h"
#include "watermarks/watermark_filter.h"
#include "watermarks/watermark_render.h"
#include "watermarks/watermark_store.h"

namespace zorva::cli {
namespace {

struct WatermarkArgs {
  std::string name;
  bool force = false;
  std::string input;
  std::string output;
  std::string pageSize;
  bool firstPageOnly = false;
  bool inFront = false;
};

constexpr const char* kStoreNote =
    "The watermarks live in com.zorva.printing.watermarks.plist in the shared data\n"
    "folder: $ZORVA_SHARED_DIR, else /var/lib/zorva when it can be written, else\n"
    "$XDG_DATA_HOME/zorva (~/.local/share/zorva).";

constexpr std::size_t kGlyphsShown = 32;

// A name on a line of its own, quoted only when it would break the line.
std::string NameText(const std::string& name) {
  const bool plain = std::none_of(name.begin(), name.end(),
                                  [](char c) { return static_cast<unsigned char>(c) < 0x20; });
  return plain && !name.empty() ? name : QuoteString(name);
}

// The shortest text that reads back as the same 32-bit float.
std::string FloatText(float f) {
  std::array<char, 32> buf{};
  const auto result = std::to_chars(buf.data(), buf.data() + buf.size(), f);
  return std::string(buf.data(), result.ptr);
}

std::string GlyphText(const WatermarkData& record) {
  if (!record.glyphs) return "none";
  std::string text = std::to_string(record.glyphCount());
  const std::size_t shown = std::min(record.glyphs->size(), kGlyphsShown);
  for (std::size_t i = 0; i < shown; ++i) {
    std::array<char, 8> hex{};
    std::snprintf(hex.data(), hex.size(), " %04x", (*record.glyphs)[i]);
    text += hex.data();
  }
  if (shown < record.glyphs->size()) {
    text += " ... (" + std::to_string(record.glyphs->size() - shown) + " more)";
  }
  return text;
}

std::string MenuText(const std::string& name) {
  const std::vector<std::string> names = loadWatermarkList(kWatermarkFileName);
  const auto at = std::find(names.begin(), names.end(), name);
  if (at == names.end()) return "not listed";
  return std::to_string(at - names.begin() + 1) + " of " + std::to_string(names.size());
}

std::string StorePath() {
  const auto path = CopyPreferenceFileURL(kWatermarkFileName);
  return path ? path->string() : "the shared data folder";
}

void FailWrite(int err) {
  if (err != 0) FailRuntime("cannot write " + StorePath() + ": " + std::strerror(err));
}

[[noreturn]] void FailUnknown(const std::string& name) {
  FailRuntime("no watermark named " + Shown(name) + "; 'zorva watermarks list' shows them");
}

void ListWatermarks() {
  for (const std::string& name : loadWatermarkList(kWatermarkFileName)) {
    std::cout << NameText(name) << '\n';
  }
}

void ShowWatermark(const WatermarkArgs& args) {
  WatermarkData w;
  if (!loadWatermarkData(kWatermarkFileName, args.name, w)) FailUnknown(args.name);
  const std::vector<TextRow> rows = {
      {"name:", QuoteString(args.name)},
      {"kind:", w.isText ? "text" : "picture"},
      {"menu position:", MenuText(args.name)},
      {"textString:", QuoteString(w.textString)},
      {"filename:", QuoteString(w.filename)},
      {"filePath:", QuoteString(w.filePath)},
      {"fontName:", QuoteString(w.fontName)},
      {"fontSize:", std::to_string(w.fontSize)},
      {"angle:", std::to_string(w.angle)},
      {"density:", std::to_string(w.density)},
      {"scale:", std::to_string(w.scale)},
      {"units:", std::to_string(w.units)},
      {"xOffset:", FloatText(w.xOffset)},
      {"yOffset:", FloatText(w.yOffset)},
      {"xPos:", FormatReal(w.xPos)},
      {"yPos:", FormatReal(w.yPos)},
      {"fontColor:", FloatText(w.fontColorRed) + " " + FloatText(w.fontColorGreen) + " " +
                         FloatText(w.fontColorBlue) + " " + FloatText(w.fontColorAlpha)},
      {"wellColor:", FloatText(w.wellColorRed) + " " + FloatText(w.wellColorGreen) + " " +
                         FloatText(w.wellColorBlue) + " " + FloatText(w.wellColorAlpha)},
      {"glyphs:", GlyphText(w)},
  };
  PrintColumns(std::cout, rows);
}

std::string JoinNames(const std::vector<WatermarkData>& records) {
  std::string text;
  for (const WatermarkData& record : records) {
    text += (text.empty() ? "" : ", ") + NameText(record.name());
  }
  return text;
}

// Puts the defaults back beside the user's own watermarks: their entries are
// rewritten and any of their names missing from the menu is appended.
void RestoreDefaults(std::vector<std::string> names, const std::vector<WatermarkData>& defaults) {
  for (const WatermarkData& record : defaults) {
    FailWrite(saveWatermarkData(kWatermarkFileName, record));
    if (std::find(names.begin(), names.end(), record.name()) == names.end()) {
      names.push_back(record.name());
    }
  }
  FailWrite(saveWatermarkList(kWatermarkFileName, names));
}

void MakeDefaults(const WatermarkArgs& args) {
  const std::vector<std::string> names = loadWatermarkList(kWatermarkFileName);
  const std::vector<WatermarkData> defaults = DefaultWatermarks(GetPDEBundle());
  if (names.empty()) {
    FailWrite(CreateDefaultWatermarks(GetPDEBundle()));
    std::cout << "Created the default watermarks: " << JoinNames(defaults) << '\n';
  } else if (args.force) {
    RestoreDefaults(names, defaults);
    std::cout << "Restored the default watermarks: " << JoinNames(defaults) << '\n';
  } else {
    std::cout << "The watermark list already holds " << names.size()
              << (names.size() == 1 ? " watermark" : " watermarks")
              << "; nothing changed (--force restores the defaults beside them).\n";
  }
}

void RemoveWatermark(const WatermarkArgs& args) {
  std::vector<std::string> names = loadWatermarkList(kWatermarkFileName);
  WatermarkData record;
  const bool stored = loadWatermarkData(kWatermarkFileName, args.name, record);
  const auto listed = std::remove(names.begin(), names.end(), args.name);
  if (!stored && listed == names.end()) FailUnknown(args.name);
  if (stored) FailWrite(removeWatermarkData(kWatermarkFileName, args.name));
  if (listed != names.end()) {
    names.erase(listed, names.end());
    FailWrite(saveWatermarkList(kWatermarkFileName, names));
  }
}

// "W,H" in points, both positive.
PageSize ParsePageSize(const std::string& text) {
  const auto comma = text.find(',');
  double w = 0;
  double h = 0;
  if (comma != std::string::npos) {
    const char* end = text.data() + text.size();
    const auto a = std::from_chars(text.data(), text.data() + comma, w);
    const auto b = std::from_chars(text.data() + comma + 1, end, h);
    if (a.ec == std::errc() && a.ptr == text.data() + comma && b.ec == std::errc() &&
        b.ptr == end && w > 0 && h > 0 && w < 1e6 && h < 1e6) {
      return {w, h};
    }
  }
  FailUsage("--page-size wants the width and height in points, as W,H (for example 595,842), not " +
            Shown(text));
}

void RenderWatermark(const WatermarkArgs& args) {
  WatermarkRenderOptions options;
  if (!args.pageSize.empty()) options.layoutPage = ParsePageSize(args.pageSize);
  options.firstPageOnly = args.firstPageOnly;
  options.inFront = args.inFront;
  WatermarkData record;
  if (!loadWatermarkData(kWatermarkFileName, args.name, record)) FailUnknown(args.name);
  int err = 0;
  const auto input = ReadWholeFile(args.input, &err);
  if (!input) FailRuntime("cannot read " + Shown(args.input) + ": " + ReadFailureText(err));
  const WatermarkProlog prolog = BuildWatermarkProlog(record, options);
  std::vector<std::string> warnings = prolog.warnings;
  const std::string_view document(reinterpret_cast<const char*>(input->data()), input->size());
  const std::string output = prolog.text.empty()
                                 ? std::string(document)
                                 : InsertWatermarkProlog(document, prolog.text, warnings);
  err = WriteFileAtomically(args.output, output);
  if (err != 0) FailRuntime("cannot write " + Shown(args.output) + ": " + std::strerror(err));
  for (const std::string& warning : warnings) std::cerr << "zorva: " << warning << '\n';
}

void AddName(CLI::App* cmd, WatermarkArgs& args) {
  cmd->add_option("NAME", args.name, "The watermark's name, as 'zorva watermarks list' shows it")
      ->required();
}

void AddList(CLI::App* group) {
  CLI::App* cmd = group->add_subcommand("list", "Print the watermark menu's names, in order");
  cmd->footer(std::string("One name per line; nothing when the list is empty.\n") + kStoreNote +
              "\n\nExample:\n  zorva watermarks list");
  cmd->callback(ListWatermarks);
}

void AddShow(CLI::App* group, const std::shared_ptr<WatermarkArgs>& args) {
  CLI::App* cmd = group->add_subcommand("show", "Print every field of one watermark");
  AddName(cmd, *args);
  cmd->footer(
      "Texts are quoted; colours are red, green, blue and alpha from 0 to 1; glyphs are\n"
      "the count and the codes in hex. An unknown NAME exits with status 1.\n\n"
      "Example:\n  zorva watermarks show Draft");
  cmd->callback([args] { ShowWatermark(*args); });
}

void AddDefaults(CLI::App* group, const std::shared_ptr<WatermarkArgs>& args) {
  CLI::App* cmd = group->add_subcommand(
      "defaults", "Create the default watermarks (Draft, Confidential, Copy) in an empty list");
  cmd->add_flag("-f,--force", args->force,
                "Also when the list is not empty: rewrite the three defaults and add their "
                "names to the list, keeping every other watermark");
  cmd->footer(std::string("As the dialog does on first use, an empty list gets the three\n"
                          "defaults and nothing else changes. A list that is not empty is\n"
                          "left alone unless --force is given.\n") +
              kStoreNote + "\n\nExample:\n  zorva watermarks defaults");
  cmd->callback([args] { MakeDefaults(*args); });
}

void AddRemove(CLI::App* group, const std::shared_ptr<WatermarkArgs>& args) {
  CLI::App* cmd =
      group->add_subcommand("remove", "Remove a watermark and its name from the menu list");
  AddName(cmd, *args);
  cmd->footer(
      "A NAME that is neither stored nor listed exits with status 1.\n\n"
      "Example:\n  zorva watermarks remove Confidential");
  cmd->callback([args] { RemoveWatermark(*args); });
}

void AddRender(CLI::App* group, const std::shared_ptr<WatermarkArgs>& args) {
  CLI::App* cmd =
      group->add_subcommand("render", "Draw a stored watermark on the pages of a PostScript file");
  AddName(cmd, *args);
  cmd->add_option("IN", args->input, "The PostScript file to print")->required();
  cmd->add_option("OUT", args->output, "Where the watermarked file is written")->required();
  cmd->add_option("--page-size", args->pageSize,
                  "The page the watermark was laid out on, W,H in points (default 612,792); "
                  "on other pages it keeps its place relative to the centre");
  cmd->add_flag("--first-page-only", args->firstPageOnly, "Draw it on the first page only");
  cmd->add_flag("--in-front", args->inFront,
                "Draw it over the page's own marks instead of under them");
  cmd->footer(
      "The output is what the zorva-watermark print filter sends to the printer: the\n"
      "watermark's code and its font, converted from the watermark store, in the\n"
      "document's prolog, drawn on each page as the printer starts (or ends) it. A font\n"
      "that cannot be had is replaced by Helvetica, a picture that cannot be read\n"
      "leaves the document unchanged; either way one line says so and OUT is written.\n"
      "An unknown NAME exits with status 1.\n\n"
      "Example:\n  zorva watermarks render Confidential report.ps report-confidential.ps");
  cmd->callback([args] { RenderWatermark(*args); });
}

}  // namespace

void AddWatermarksCommands(CLI::App& app) {
  CLI::App* group = app.add_subcommand("watermarks", "List, show and manage stored watermarks");
  group->require_subcommand(1);
  auto args = std::make_shared<WatermarkArgs>();
  AddList(group);
  AddShow(group, args);
  AddDefaults(group, args);
  AddRemove(group, args);
  AddRender(group, args);
}

}  // namespace zorva::cli
