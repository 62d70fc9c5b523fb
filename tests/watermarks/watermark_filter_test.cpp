// The zorva-watermark print filter as CUPS runs it: arguments and job
// options on the command line, the document in a file, PostScript out; and
// a whole job through a private CUPS server to a recording backend.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include "support/private_cupsd.h"
#include "watermarks/watermark_fixture.h"

namespace zorva::test {
namespace {

ToolResult Filter(const std::string& options, const std::filesystem::path& document) {
  return RunProgram(ZORVA_WATERMARK_FILTER,
                    {"42", "ann", "report", "1", options, document.string()});
}

int Lines(const std::string& text) {
  return static_cast<int>(std::count(text.begin(), text.end(), '\n'));
}

class WatermarkFilter : public WatermarkDrawing {
 protected:
  void SetUp() override {
    WatermarkDrawing::SetUp();
    if (IsSkipped()) return;
    StoreDejaVu();
    WatermarkData w = RedBlock();
    w.textString = kFullBlock;
    ASSERT_EQ(saveWatermarkData(kWatermarkFileName, w), 0);
    document_ = dir_ / "doc.ps";
    WriteText(document_, TwoPageDocument({}));
  }
  std::filesystem::path document_;
};

TEST_F(WatermarkFilter, WithoutAChoiceCopiesByteForByte) {
  // Binary bytes and no line end at the end: a copy, not a rewrite.
  const std::string odd = TwoPageDocument({}) + std::string("%\x00\xFF\r\n\x04 tail", 12);
  WriteText(document_, odd);
  for (const char* options : {"", "copies=2 media=a4", "zorva-watermark-pages=first"}) {
    const ToolResult r = Filter(options, document_);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    EXPECT_EQ(r.out, odd) << options;
    EXPECT_EQ(r.err, "");
  }
  const std::filesystem::path out = dir_ / "out.ps";
  WriteText(out, Filter("", document_).out);
  EXPECT_EQ(RunProgram("cmp", {document_.string(), out.string()}).exitCode, 0);
}

TEST_F(WatermarkFilter, UnknownWatermarkPrintsTheDocumentAsItIs) {
  const ToolResult r = Filter("zorva-watermark=Nothing", document_);
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.out, ReadText(document_));
  EXPECT_EQ(Lines(r.err), 1);
  EXPECT_TRUE(Contains(r.err, "WARNING: zorva-watermark: there is no watermark named \"Nothing\""));
}

TEST_F(WatermarkFilter, DrawsTheChosenWatermark) {
  const std::string name = kFullBlock;
  for (bool firstOnly : {false, true}) {
    const ToolResult r = Filter(
        std::string("zorva-watermark=") + name + (firstOnly ? " zorva-watermark-pages=first" : ""),
        document_);
    EXPECT_EQ(r.exitCode, 0);
    EXPECT_EQ(r.err, "");
    EXPECT_TRUE(Contains(r.out, "/FontName /DejaVuSans def"));
    const std::filesystem::path out = dir_ / "out.ps";
    WriteText(out, r.out);
    const Rendered pages = RenderWithGhostscript(out);
    ASSERT_EQ(pages.pages.size(), 2u) << pages.out;
    EXPECT_TRUE(Near(pages.pages[0].at(245, 340), kRed));
    EXPECT_TRUE(Near(pages.pages[1].at(245, 340), firstOnly ? kWhite : kRed));
  }
}

TEST_F(WatermarkFilter, CorruptFontStillPrintsWithOneWarning) {
  StoreFont({0, 1, 0, 0, 0, 9, 0, 0});
  const ToolResult r = Filter(std::string("zorva-watermark=") + kFullBlock, document_);
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(Lines(r.err), 1) << r.err;
  EXPECT_TRUE(Contains(r.err, "WARNING: zorva-watermark: font DejaVuSans in the watermark store"));
  const std::filesystem::path out = dir_ / "out.ps";
  WriteText(out, r.out);
  const Rendered pages = RenderWithGhostscript(out);
  EXPECT_EQ(pages.exitCode, 0) << pages.out;
  EXPECT_EQ(pages.pages.size(), 2u);
}

TEST_F(WatermarkFilter, MissingPicturePrintsTheDocumentAsItIs) {
  WatermarkData w;
  w.filename = "logo.jpg";
  w.filePath = (dir_.path() / "logo.jpg").string();
  ASSERT_EQ(saveWatermarkData(kWatermarkFileName, w), 0);
  const ToolResult r = Filter("zorva-watermark=logo.jpg", document_);
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(r.out, ReadText(document_));
  EXPECT_EQ(Lines(r.err), 1) << r.err;
  EXPECT_TRUE(Contains(r.err, "logo.jpg\" cannot be read; printing without the watermark"));
}

TEST_F(WatermarkFilter, DocumentWithoutStructureCommentsStillGetsIt) {
  WriteText(document_, TwoPageDocument({{612, 792}, false, false}));
  const ToolResult r = Filter(std::string("zorva-watermark=") + kFullBlock, document_);
  EXPECT_EQ(r.exitCode, 0);
  EXPECT_EQ(Lines(r.err), 1) << r.err;
  EXPECT_TRUE(Contains(r.err, "WARNING: zorva-watermark: the document has no page structure"));
  const std::filesystem::path out = dir_ / "out.ps";
  WriteText(out, r.out);
  const Rendered pages = RenderWithGhostscript(out);
  ASSERT_EQ(pages.pages.size(), 2u) << pages.out;
  for (const PagePicture& page : pages.pages) EXPECT_TRUE(Near(page.at(245, 340), kRed));
}

TEST_F(WatermarkFilter, ArgumentsAndHelp) {
  const ToolResult few = RunProgram(ZORVA_WATERMARK_FILTER, {"1", "ann", "t", "1"});
  EXPECT_EQ(few.exitCode, 1);
  EXPECT_EQ(few.err, "Usage: zorva-watermark job-id user title copies options [file]\n");
  const ToolResult help = RunProgram(ZORVA_WATERMARK_FILTER, {"--help"});
  EXPECT_EQ(help.exitCode, 0);
  EXPECT_TRUE(Contains(help.out, "zorva-watermark-pages=all|first"));
  const ToolResult missing = Filter("", dir_ / "gone.ps");
  EXPECT_EQ(missing.exitCode, 1);
  EXPECT_EQ(Lines(missing.err), 1);
  EXPECT_TRUE(Contains(missing.err, "ERROR: zorva-watermark: cannot open"));
}

// A queue whose PPD takes the filter's output: CUPS puts zorva-watermark in
// the chain by the conversion rule, and the recording backend keeps what
// reaches the printer.
constexpr const char* kPpd =
    "*PPD-Adobe: \"4.3\"\n*FormatVersion: \"4.3\"\n*FileVersion: \"1.0\"\n"
    "*LanguageVersion: English\n*LanguageEncoding: ISOLatin1\n*PCFileName: \"ZORVAWM.PPD\"\n"
    "*Manufacturer: \"Zorva\"\n*Product: \"(Zorva Test)\"\n*ModelName: \"Zorva Watermark Test\"\n"
    "*ShortNickName: \"Zorva Watermark Test\"\n*NickName: \"Zorva Watermark Test\"\n"
    "*PSVersion: \"(3010.000) 0\"\n*LanguageLevel: \"3\"\n*ColorDevice: True\n"
    "*cupsFilter2: \"application/vnd.zorva-postscript application/vnd.cups-postscript 0 -\"\n"
    "*OpenUI *PageSize: PickOne\n*DefaultPageSize: Letter\n"
    "*PageSize Letter: \"<</PageSize[612 792]>>setpagedevice\"\n*CloseUI: *PageSize\n"
    "*DefaultImageableArea: Letter\n*ImageableArea Letter: \"0 0 612 792\"\n"
    "*DefaultPaperDimension: Letter\n*PaperDimension Letter: \"612 792\"\n";

constexpr const char* kRecordingBackend =
    "#!/bin/sh\n"
    "# Keeps each job's document and options in the folder its URI names.\n"
    "[ $# -eq 0 ] && { echo 'direct zorva-record \"Unknown\" \"Zorva recorder\"'; exit 0; }\n"
    "dir=${DEVICE_URI#zorva-record:}\n"
    "printf '%s\\n' \"$5\" > \"$dir/job-$1.options\"\n"
    "if [ -n \"$6\" ]; then cat \"$6\"; else cat; fi > \"$dir/job-$1.tmp\"\n"
    "mv \"$dir/job-$1.tmp\" \"$dir/job-$1.ps\"\n";

TEST_F(WatermarkFilter, EndToEndThroughCups) {
  TempDir tools;
  chmod(tools.path().c_str(), 0755);
  const std::filesystem::path backend = tools / "zorva-record";
  WriteText(backend, kRecordingBackend);
  chmod(backend.c_str(), 0700);  // run as root, like the system's own backends
  const std::filesystem::path record = tools / "jobs";
  std::filesystem::create_directory(record);
  chmod(record.c_str(), 0777);
  WriteText(tools / "zorva.ppd", kPpd);
  // The filter runs as lp: the store must be readable to it.
  chmod(dir_.path().c_str(), 0755);
  const std::filesystem::path mime = ZORVA_WATERMARK_MIME_DIR;

  PrivateCupsd cupsd;
  CupsdExtras extras;
  extras.filters = {{"zorva-watermark", ZORVA_WATERMARK_FILTER}};
  extras.backends = {{"zorva-record", backend}};
  extras.mimeFiles = {mime / "zorva-watermark.types", mime / "zorva-watermark.convs"};
  extras.env = {{"ZORVA_SHARED_DIR", (dir_.path() / "store").string()}};
  std::string reason;
  if (!cupsd.start(&reason, extras)) GTEST_SKIP() << reason;
  ASSERT_TRUE(
      cupsd.addQueue("zwm", tools / "zorva.ppd", &reason, "zorva-record:" + record.string()))
      << reason;

  const auto submit = [&](const std::vector<std::string>& options) {
    std::vector<std::string> args = {
        "-h", cupsd.server(), "-d", "zwm", "-o", "document-format=application/vnd.cups-postscript"};
    for (const std::string& o : options) {
      args.push_back("-o");
      args.push_back(o);
    }
    args.push_back(document_.string());
    const ToolResult r = RunProgram("lp", args);
    EXPECT_EQ(r.exitCode, 0) << r.err;
    const auto dash = r.out.rfind('-');
    return std::atoi(r.out.c_str() + (dash == std::string::npos ? 0 : dash + 1));
  };
  const auto recorded = [&](int job) {
    const std::filesystem::path ps = record / ("job-" + std::to_string(job) + ".ps");
    for (int i = 0; i < 200 && !std::filesystem::exists(ps); ++i) {
      std::this_thread::sleep_for(std::chrono::milliseconds(50));
    }
    return std::filesystem::exists(ps) ? ReadText(ps) : std::string();
  };

  const int plain = submit({});
  const int marked = submit({std::string("zorva-watermark=") + kFullBlock});
  const std::string plainOut = recorded(plain);
  const std::string markedOut = recorded(marked);
  const std::string log = ReadText(cupsd.folder() / "log/error_log");
  EXPECT_EQ(plainOut, ReadText(document_)) << log;
  ASSERT_FALSE(markedOut.empty()) << log;
  EXPECT_TRUE(Contains(markedOut, "%%BeginResource: procset ZorvaWatermark"));
  EXPECT_TRUE(Contains(markedOut, "/FontName /DejaVuSans def"));
  EXPECT_TRUE(Contains(ReadText(record / ("job-" + std::to_string(marked) + ".options")),
                       "zorva-watermark="));
  const std::filesystem::path out = dir_ / "printed.ps";
  WriteText(out, markedOut);
  const Rendered pages = RenderWithGhostscript(out);
  ASSERT_EQ(pages.pages.size(), 2u) << pages.out;
  for (const PagePicture& page : pages.pages) EXPECT_TRUE(Near(page.at(245, 340), kRed));
}

}  // namespace
}  // namespace zorva::test
