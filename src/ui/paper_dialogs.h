// The paper (stock) dialog: size with a custom size in millimetres, weight
// with a custom weight, type and colour with custom names, pre-punching,
// coating, finish, grain, description, comment and the paper's name. Used
// for the job's paper and, with their own context, for covers, inserts and
// exception pages.
#pragma once

#include "model/stock.h"

class QWidget;

namespace zorva {

// Custom sizes the printer feeds, hundredths of a millimetre.
inline constexpr std::int32_t kMinCustomWidth = 9800;
inline constexpr std::int32_t kMaxCustomWidth = 33000;
inline constexpr std::int32_t kMinCustomLength = 14800;
inline constexpr std::int32_t kMaxCustomLength = 48800;
// Weights that may be typed, grams per square metre.
inline constexpr std::int32_t kMinCustomWeight = 60;
inline constexpr std::int32_t kMaxCustomWeight = 300;

// Tab modulus: tabs in a set of tab stock, or sheets in a sequence of
// ordered stock.
inline constexpr std::int32_t kMinModulus = 1;
inline constexpr std::int32_t kMaxModulus = 99;

// Stock types whose sheets come in sets.
inline constexpr std::int32_t kStockTypePrecutTab = 4;
inline constexpr std::int32_t kStockTypeFullCutTab = 5;
inline constexpr std::int32_t kStockTypeOrdered = 6;

enum class OrderedStockMode { Tabs, Ordered };

// The tab or ordered stock set-up: edits the stock's modulus; true when the
// user accepted a value in range (a value out of range is refused).
bool RunModalOrderedStockSetup(QWidget* parent, OrderedStockMode mode, JobContext context,
                               Stock& stock);

// Edits stock in place; true when the user accepted (on "Cancel" the stock
// is left exactly as it was). Out-of-range values are refused with an alert
// and the dialog stays open.
bool RunModalStockDialog(QWidget* parent, Stock& stock, JobContext context);

}  // namespace zorva
