// The readable summary of job-ticket settings, shown before an export and
// after an import so the user can check what the ticket says: an ordered
// list of lines, section by section, with localised labels.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "core/value.h"

namespace zorva {

using SummaryLines = std::vector<std::string>;

// Every section in the fixed order: job notes, job setup, output, image
// adjustment (image quality, colour, highlight colour and special pages add
// nothing). Each section is a heading, one line per setting present and a
// line holding one space.
void buildSummaryText(const Dictionary& settings, SummaryLines& lines);

void addJobNotes(const Dictionary& settings, SummaryLines& lines);
void addJobSetup(const Dictionary& settings, SummaryLines& lines);
void addOutput(const Dictionary& settings, SummaryLines& lines);
void addOutputLocation(const Dictionary& settings, SummaryLines& lines);
void addImageAdjustment(const Dictionary& settings, SummaryLines& lines);
void addImageQuality(const Dictionary& settings, SummaryLines& lines);
void addColor(const Dictionary& settings, SummaryLines& lines);
void addHLColor(const Dictionary& settings, SummaryLines& lines);
void addSpecialPages(const Dictionary& settings, SummaryLines& lines);

// The staple line for a staple value (the staple dialogs' values); the
// hole-punch line for a hole-punch value and its number of holes.
void addStaple(std::int32_t value, SummaryLines& lines);
void addHolePunch(std::int32_t value, std::int32_t holes, SummaryLines& lines);

// The lines joined with "\n", as shown and copied.
std::string JoinSummaryLines(const SummaryLines& lines);

}  // namespace zorva
