// The exception pages the job-ticket benchmarks fill their tickets with: page
// k covers pages 3k+1 to 3k+2 on its own paper, with image shift on every
// third, colour settings on every seventh and darkness on every second page.
#pragma once

#include <cstdint>
#include <string>

#include "core/value.h"

namespace zorva::bench {

inline Dictionary StockNumber(std::int64_t k) {
  return Dictionary{{"Size", Value(1 + k % 5)},
                    {"Type", Value(1 + k % 10)},
                    {"Modulus", Value(5)},
                    {"Color", Value(1 + k % 13)},
                    {"Weight", Value(80 + k % 100)},
                    {"Description", Value("Stock " + std::to_string(k) + " & co")}};
}

inline Dictionary ExceptionNumber(std::int64_t k) {
  Dictionary page{{"StartPage", Value(3 * k + 1)},
                  {"EndPage", Value(3 * k + 2)},
                  {"SidesImaged", Value(1 + k % 3)},
                  {"Stock", Value(StockNumber(k))}};
  if (k % 3 == 0) {
    page.set("com.zorva.print.ImageShiftOptionsPage",
             Value(Dictionary{{"Inches", Value(1)}, {"X1", Value(10)}, {"Y1", Value(-5)}}));
  }
  if (k % 7 == 0) {
    page.set("FullColorOptionsPage",
             Value(Dictionary{{"FCLightness", Value(10)}, {"ImageRendering", Value(4)}}));
  }
  if (k % 2 == 0) page.set("LightenDarken", Value(2));
  return page;
}

}  // namespace zorva::bench
