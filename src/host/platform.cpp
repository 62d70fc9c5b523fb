// Operating-system version tests: every system this runs on counts as 10.5
// or later, so the code paths for the newer system are the ones taken.
#include "host/platform.h"

namespace zorva {

bool RunningOn104OrLater() {
  return true;
}
bool RunningOn105OrLater() {
  return true;
}

}  // namespace zorva
