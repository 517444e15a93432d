#include "host/assemble/assembly_json.h"

#include <algorithm>

using nlohmann::json;

namespace jqhost {
namespace {

std::ptrdiff_t CountPairs(const Assembly& assembly, PairState state) {
  return std::count_if(assembly.pairs.begin(), assembly.pairs.end(),
                       [state](const FramePair& pair) { return pair.state == state; });
}

json Coordinates(cv::Point2d point) {
  return {{"x", point.x}, {"y", point.y}};
}

json FramePairJson(const FramePair& pair) {
  json entry = {{"first", pair.first + 1},
                {"second", pair.second + 1},
                {"state", PairStateName(pair.state)},
                {"shift", {{"x", pair.shift.x}, {"y", pair.shift.y}}},
                {"fineShift", Coordinates(pair.fineShift)},
                {"matches", pair.matches},
                {"matched", pair.matched},
                {"confidence", pair.Confidence()}};
  if (pair.doubt) {
    entry["correlation"] = pair.doubt->agreement;
    entry["rival"] = pair.doubt->rival;
    entry["difference"] = pair.difference;
  }
  if (pair.doubt && pair.doubt->doubtful) entry["doubt"] = DoubtReasonName(pair.doubt->reason);
  if (pair.residual) entry["residual"] = *pair.residual;
  return entry;
}

json AssembledFrameJson(const Assembly& assembly, std::size_t number) {
  const AssembledFrame& frame = assembly.frames[number];
  json entry = {{"number", number + 1},
                {"name", frame.name},
                {"corners", frame.corners},
                {"island", frame.island},
                {"pairs", frame.pairs}};
  if (frame.place) entry["place"] = Coordinates(*frame.place);
  if (frame.pairs > 0) {
    entry["residual"] = frame.residual;
    entry["confidence"] = frame.confidence;
  }
  if (frame.bestPair) entry["bestPair"] = FramePairJson(assembly.pairs[*frame.bestPair]);
  return entry;
}

}  // namespace

json AssemblySummaryJson(const Assembly& assembly) {
  json islands = json::array();
  for (const Island& island : assembly.islands) {
    json numbers = json::array();
    for (const std::size_t frame : island.frames) numbers.push_back(frame + 1);
    islands.push_back({{"frames", std::move(numbers)},
                       {"width", island.bounds.width},
                       {"height", island.bounds.height}});
  }
  return {{"compared", assembly.pairs.size()},
          {"used", CountPairs(assembly, PairState::kUsed)},
          {"thrownOut", CountPairs(assembly, PairState::kThrownOut)},
          {"loops",
           {{"count", assembly.loops.loops},
            {"median", assembly.loops.median},
            {"largest", assembly.loops.largest}}},
          {"islands", std::move(islands)},
          {"stopped", assembly.stopped}};
}

json AssemblyJson(const Assembly& assembly) {
  json result = AssemblySummaryJson(assembly);
  json frames = json::array(), pairs = json::array();
  for (std::size_t i = 0; i < assembly.frames.size(); ++i) {
    if (assembly.frames[i].usable) frames.push_back(AssembledFrameJson(assembly, i));
  }
  for (const FramePair& pair : assembly.pairs) {
    if (pair.doubt) pairs.push_back(FramePairJson(pair));
  }
  result["frames"] = std::move(frames);
  result["pairs"] = std::move(pairs);
  return result;
}

}  // namespace jqhost
