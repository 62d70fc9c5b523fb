// What the printer will make of a job, for zorva-print's preview: the sheets
// and pages in output order (front cover, the document's pages with the
// inserted sheets where the inserts say, back cover), each with its kind,
// paper and sides; the pages an exception range prints on its own stock and
// sides; the booklet's imposition when booklet layout is on; and where the
// chosen watermark prints. No Qt here, so the order rules are tested without
// a display and the dialog only draws what this says.
//
// Covers follow the job ticket's cover types: a cover printed on its front
// carries the document's first page (the back cover its last), printed on
// both sides the first two (the last two); a blank cover carries none. An
// insert after page N follows the last printed page at or before N (0: before
// the first page); one naming a page past the printed ones goes after the
// last. Pages used by a cover are not printed again inside the job.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "core/ticket.h"
#include "model/stock.h"
#include "watermarks/watermark_choice.h"

namespace zorva {

class Bundle;
class PPD;

enum class PreviewItemKind {
  FrontCover,
  Insert,
  DocumentPage,
  ExceptionPage,  // a document page inside an exception range
  BackCover,
};

// Which sides of the sheet a document page's sides value prints (the
// "Duplex" codes: 1 one-sided, 2 long edge, 3 short edge; unset: the printer's
// default) and which a cover prints (its "SidesImaged": 1 none, 2 front,
// 3 back, 4 both).
struct PreviewItem {
  PreviewItemKind kind = PreviewItemKind::DocumentPage;
  Stock stock;                  // the paper it comes out on
  std::int32_t sides = kUnset;  // Duplex code, or a cover's SidesImaged
  // Document pages (1-based) printed on the item: a page's own number; a
  // cover's front and back faces; 0 where nothing is printed.
  std::int32_t frontPage = 0;
  std::int32_t backPage = 0;
  // Inserts: the page the sheet follows (0: before the first page), and the
  // sheet's number among the insert's quantity (1-based).
  std::int32_t afterPage = 0;
  std::int32_t sheet = 0;
  std::int32_t quantity = 0;
  // Exception pages: the range the page belongs to.
  std::int32_t rangeFirst = 0;
  std::int32_t rangeLast = 0;

  friend bool operator==(const PreviewItem& a, const PreviewItem& b);
};

// One side of a booklet sheet: the pages (in printed order, 1-based; 0 for
// a blank page the padding adds) on its left and right halves.
struct BookletSide {
  std::int32_t sheet = 0;  // 1-based
  bool front = true;
  std::int32_t left = 0;
  std::int32_t right = 0;
  friend bool operator==(const BookletSide&, const BookletSide&) = default;
};

struct PreviewPlan {
  std::vector<PreviewItem> items;
  bool booklet = false;
  // Booklet layout: the printed document pages in their order, padded with
  // blank pages (0) to a multiple of four, and the sheets' sides.
  std::vector<std::int32_t> bookletPages;
  std::vector<BookletSide> bookletSides;
  // The watermark the job prints with, when it has one, and the first page
  // the job prints (0 when none), which first-page-only marks.
  std::optional<WatermarkChoice> watermark;
  std::int32_t firstPrintedPage = 0;
};

struct PreviewInput {
  std::int32_t pageCount = 0;  // the document's pages
  // The pages chosen to print (1 and beyond the last: all).
  std::int32_t firstPage = 1;
  std::int32_t lastPage = INT32_MAX;
};

// The plan for a document of input.pageCount pages printed with settings;
// ppd (may be null) gives the printer's default sides when the settings say
// none, as the job options do.
PreviewPlan BuildPreviewPlan(const Ticket& settings, const PreviewInput& input,
                             const PPD* ppd = nullptr);

// Booklet imposition of `pages` pages in reading order (padded to a multiple
// of four): each sheet's front carries the outermost free pair, its back the
// pair inside it.
std::vector<BookletSide> BookletImposition(std::int32_t pages);

// Whether the watermark prints on a document page (0: a face that carries
// none): on every page, or with first-page-only on the first the job prints.
bool WatermarkPrintsOn(const PreviewPlan& plan, std::int32_t page);

// The item's texts as the preview labels it, from the bundle's strings.
struct PreviewItemText {
  std::string kind;   // "Front Cover", "Insert 2 of 3 after page 4", "Page 5", ...
  std::string paper;  // the stock's name or size, colour, type; "Printer Default"
  std::string sides;  // "1-Sided", "Print on Front", ...
};
PreviewItemText DescribePreviewItem(const PreviewItem& item, const Bundle* bundle);

// The stock's colour as red, green, blue (0-255), when it is one the preview
// can tint with: a listed colour, or a custom colour named like one.
std::optional<std::array<std::uint8_t, 3>> StockTint(const Stock& stock);

}  // namespace zorva
