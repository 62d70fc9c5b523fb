// Feeds arbitrary bytes to the TrueType to Type 42 converter, in both split
// modes, and to the PostScript-name reader. Besides not crashing or reading
// outside the input, a refused font must leave the output untouched and a
// complete program must end with its definefont line.
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

#include "watermarks/type42.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::span<const std::uint8_t> font(data, size);
  const std::string name = zorva::ReadPostScriptName(font);
  for (const bool split : {false, true}) {
    std::string program;
    zorva::Type42Options options;
    options.splitLargeTables = split;
    const zorva::Type42Result result =
        zorva::convertTTFtoPS42(font, name.empty() ? "Fuzz" : name, program, options, nullptr);
    switch (result.status) {
      case zorva::Type42Status::kMalformed:
        if (!program.empty() || result.message.empty()) __builtin_trap();
        break;
      case zorva::Type42Status::kIncomplete:
        if (split || program.empty()) __builtin_trap();
        break;
      case zorva::Type42Status::kComplete:
        if (!program.ends_with("end definefont pop\n")) __builtin_trap();
        break;
    }
  }
  return 0;
}
