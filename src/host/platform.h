// Operating-system version tests kept for the code that asks them. This
// platform stands for the newest systems those tests know about.
#pragma once

namespace zorva {

bool RunningOn104OrLater();
bool RunningOn105OrLater();

}  // namespace zorva
