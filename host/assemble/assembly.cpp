#include "host/assemble/assembly.h"

namespace jqhost {

const char* PairStateName(PairState state) {
  switch (state) {
    case PairState::kUsed:
      return "used";
    case PairState::kTooFewMatches:
      return "too few matches";
    case PairState::kShiftTooLarge:
      return "shift too large";
    case PairState::kContradicted:
      return "contradicted";
    case PairState::kRepeats:
      return "repeats";
    case PairState::kUnsupported:
      return "unsupported";
    case PairState::kThrownOut:
      return "thrown out";
  }
  return "";
}

}  // namespace jqhost
