// Feeds arbitrary bytes to PPD reading through the product's layer: open,
// encoding, every main keyword's menu with and without conflict checks,
// default choices, the option listings and the installable options. Every
// text handed back must be well-formed UTF-8.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <span>

#include "core/text.h"
#include "host/keyword_tables.h"
#include "paper/ppd.h"

// libcups 2.4 forgets to free the first copy of a model-name keyword (such as
// *NickName) that a PPD repeats; the leak is inside its parser, not ours.
extern "C" const char* __lsan_default_suppressions() {
  return "leak:_ppdOpen\n";
}

namespace {

void Check(const std::string& text) {
  if (!zorva::IsValidUtf8(text)) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace zorva;
  PPDPtr ppd = PPDOpenData(std::span<const std::uint8_t>(data, size));
  if (!ppd) return 0;
  (void)PPDGetEncoding(ppd.get());
  for (const MainKeyword* row = MainKeywordMap; row->keyword; ++row) {
    for (bool conflicts : {false, true}) {
      for (const PPDMenuItem& item :
           PPDPopulateMenuWithChoices(ppd.get(), row->keyword, conflicts)) {
        Check(item.text);
        Check(item.choice);
      }
    }
    if (auto choice = PPDCopyDefaultChoice(ppd.get(), row->keyword)) {
      Check(*choice);
      if (auto text = PPDCopyChoiceText(ppd.get(), row->keyword, *choice)) Check(*text);
    }
  }
  for (const auto& list : {PPDMainKeywordOptions(ppd.get()), PPDInstallableOptions(ppd.get())}) {
    for (const PPDOptionInfo& option : list) {
      Check(option.text);
      for (const PPDChoiceInfo& choice : option.choices) Check(choice.text);
    }
  }
  LoadInstallableOptions(ppd.get(), InstalledFeatures);
  (void)getInstalledFeature("StackerTray1Key");
  UnloadInstallableOptions();
  return 0;
}
