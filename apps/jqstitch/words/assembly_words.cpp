#include "words/assembly_words.h"

#include <algorithm>
#include <filesystem>

#include "words/numbers.h"

using jqhost::AssembledFrame;
using jqhost::Assembly;
using jqhost::FramePair;
using jqhost::PairState;

namespace jqstitch {
namespace {

std::string Plural(std::size_t count, const std::string& what) {
  return std::to_string(count) + " " + what + (count == 1 ? "" : "s");
}

std::string WhyNoPair(const FramePair& pair) {
  switch (pair.state) {
    case PairState::kTooFewMatches:
      return "too few, and no other pair agrees";
    case PairState::kShiftTooLarge:
      return "too little overlap, and no other pair agrees";
    case PairState::kContradicted:
      return "another shift fits better";
    case PairState::kRepeats:
      return "other shifts fit as well";
    case PairState::kUnsupported:
      return "hardly alike where they overlap";
    case PairState::kThrownOut:
      return "thrown out, because other pairs contradict it";
    case PairState::kUsed:
      break;
  }
  return std::string();
}

std::string BestPairText(const Assembly& assembly, std::size_t number) {
  const AssembledFrame& frame = assembly.frames[number];
  if (frame.corners == 0) return "it shows no corners";
  if (!frame.bestPair) return "it has nothing in common with any frame";
  const FramePair& pair = assembly.pairs[*frame.bestPair];
  const std::size_t other = pair.first == number ? pair.second : pair.first;
  return "best pair: with " +
         std::filesystem::path(assembly.frames[other].name).filename().string() + ", " +
         std::to_string(pair.matches) + " matches (" + WhyNoPair(pair) + ")";
}

std::ptrdiff_t CountPairs(const Assembly& assembly, PairState state) {
  return std::count_if(assembly.pairs.begin(), assembly.pairs.end(),
                       [state](const FramePair& pair) { return pair.state == state; });
}

std::string PairsNote(const Assembly& assembly) {
  const std::ptrdiff_t thrown = CountPairs(assembly, PairState::kThrownOut);
  std::string text = "Pairs: " + std::to_string(CountPairs(assembly, PairState::kUsed)) + " of " +
                     std::to_string(assembly.pairs.size()) + " compared hold the frames together";
  if (thrown > 0) text += ", " + std::to_string(thrown) + " thrown out";
  if (assembly.loops.loops > 0) {
    text += "; " + Plural(assembly.loops.loops, "loop") + " of three and four close within " +
            Fixed(assembly.loops.median, 1) + " pixels (median), " +
            Fixed(assembly.loops.largest, 1) + " at most";
  }
  return text;
}

}  // namespace

std::string UnconnectedReason(const jqhost::RunRecord& record, const jqhost::FrameResult& frame) {
  std::string alone = "nothing that can be trusted connects it with the picture";
  const std::size_t number = static_cast<std::size_t>(frame.number) - 1;
  if (!record.assembly || number >= record.assembly->frames.size()) return alone;
  const int island = record.assembly->frames[number].island;
  if (island > 1) {
    return "it belongs to island " + std::to_string(island) +
           ", which nothing connects with the picture";
  }
  return alone + "; " + BestPairText(*record.assembly, number);
}

std::vector<std::string> AssemblyNotes(const Assembly& assembly, bool allIslands) {
  std::vector<std::string> notes;
  if (!assembly.pairs.empty()) notes.push_back(PairsNote(assembly));
  if (assembly.islands.size() > 1) {
    std::string sizes;
    for (const jqhost::Island& island : assembly.islands) {
      sizes += (sizes.empty() ? "" : ", ") + std::to_string(island.frames.size());
    }
    notes.push_back("Islands: " + std::to_string(assembly.islands.size()) + " (" + sizes +
                    " frames) that nothing connects; the picture is the largest" +
                    (allIslands ? "" : ", --islands all writes each"));
  }
  return notes;
}

}  // namespace jqstitch
