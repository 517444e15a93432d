#include "host/journal/journal_entries.h"

#include <climits>
#include <cmath>

#include "host/input_error.h"
#include "host/journal/json_fields.h"

using nlohmann::json;

namespace jqhost {
namespace {

constexpr int kMostNumber = 999999999;
constexpr int kLongestFrame = 65535;  // pixels a side
// Far beyond any mosaic, and far from where sums of two would leave 32 bits.
constexpr int kFarthest = 1 << 29;
constexpr DoubtReason kReasons[] = {DoubtReason::kNone, DoubtReason::kContradicted,
                                    DoubtReason::kRepeats, DoubtReason::kUnsupported};

json Pair(cv::Point point) {
  return {point.x, point.y};
}

json Pair(cv::Size size) {
  return {size.width, size.height};
}

cv::Size SizeField(const json& object, const char* name, int least, int most) {
  const cv::Point pair = PairField(object, name, least, most);
  return cv::Size(pair.x, pair.y);
}

json OrNull(float value) {
  return std::isnan(value) ? json() : json(value);
}

json DoubtFields(const PlacementDoubt& doubt) {
  return {{"reason", DoubtReasonName(doubt.reason)},
          {"doubtful", doubt.doubtful},
          {"confidence", doubt.confidence},
          {"agreement", doubt.agreement},
          {"rival", doubt.rival},
          {"rivalShift", Pair(doubt.rivalShift)},
          {"periodX", doubt.period.x},
          {"periodY", doubt.period.y}};
}

PlacementDoubt ReadDoubt(const json& object) {
  if (!object.is_object()) throw InputError("its field \"doubt\" is no object");
  PlacementDoubt doubt;
  const std::string reason = TextField(object, "reason");
  for (const DoubtReason known : kReasons) {
    if (reason == DoubtReasonName(known)) doubt.reason = known;
  }
  doubt.doubtful = FlagField(object, "doubtful");
  doubt.confidence = NumberField(object, "confidence");
  doubt.agreement = NumberField(object, "agreement");
  doubt.rival = NumberField(object, "rival");
  doubt.rivalShift = PairField(object, "rivalShift", -kFarthest, kFarthest);
  doubt.period = cv::Point2d(NumberField(object, "periodX"), NumberField(object, "periodY"));
  return doubt;
}

json ToJson(const FrameEntry& frame) {
  const JQFrameVerdict& measured = frame.result.measured;
  json object = {{"entry", "frame"},
                 {"number", frame.number},
                 {"bytes", frame.bytes},
                 {"crc", frame.crc},
                 {"size", Pair(frame.size)},
                 {"name", frame.result.name},
                 {"sourceNumber", frame.result.number},
                 {"place", Pair(frame.result.position)},
                 {"offset", Pair(measured.offset)},
                 {"mosaic", Pair(frame.mosaic)},
                 {"position", Pair(frame.position)},
                 {"boxMin", Pair(frame.boxMin)},
                 {"boxMax", Pair(frame.boxMax)},
                 {"matches", measured.matchCount},
                 {"pairs", measured.pairCount},
                 {"registered", measured.registered},
                 {"shiftShare", OrNull(measured.shiftShare)},
                 {"brightness", OrNull(measured.brightness)},
                 {"brightnessLimit", OrNull(measured.brightnessLimit)},
                 {"definition", OrNull(measured.definition)},
                 {"definitionLimit", OrNull(measured.definitionLimit)},
                 {"motion", OrNull(measured.motion)},
                 {"motionLimit", OrNull(measured.motionLimit)},
                 {"seconds", frame.result.seconds},
                 {"wide", frame.samples.wide},
                 {"bits", frame.samples.bits},
                 {"bitsFound", frame.samples.found},
                 {"saturatedFrames", frame.samples.saturatedFrames},
                 {"grey", frame.samples.grey}};
  if (frame.result.doubt) object["doubt"] = DoubtFields(*frame.result.doubt);
  return object;
}

json ToJson(const ContinueEntry& entry) {
  return {{"entry", "continue"}, {"number", entry.number}, {"place", Pair(entry.place)}};
}

json ToJson(const UndoEntry& entry) {
  return {{"entry", "undo"}, {"number", entry.number}};
}

json ToJson(const PictureEntry& picture) {
  const SaveOptions& save = picture.save;
  json object = {{"entry", "picture"},
                 {"path", save.path},
                 {"trim", picture.trim},
                 {"without", picture.without},
                 {"grey", save.grey},
                 {"scaleBar", save.scaleBar},
                 {"compression", static_cast<int>(save.compression)},
                 {"quality", save.quality}};
  if (save.background) object["background"] = *save.background;
  if (save.pixelSize) {
    object["pixelWidth"] = save.pixelSize->width;
    object["pixelHeight"] = save.pixelSize->height;
  }
  return object;
}

int NumberOf(const json& object) {
  return static_cast<int>(WholeField(object, "number", 1, kMostNumber));
}

FrameEntry ReadFrame(const json& object) {
  FrameEntry frame;
  frame.number = NumberOf(object);
  frame.bytes = static_cast<std::uint64_t>(WholeField(object, "bytes", 1, INT64_MAX));
  frame.crc = static_cast<std::uint32_t>(WholeField(object, "crc", 0, UINT32_MAX));
  frame.size = SizeField(object, "size", 1, kLongestFrame);
  frame.result.name = TextField(object, "name");
  frame.result.number = static_cast<int>(WholeField(object, "sourceNumber", 0, INT_MAX));
  frame.result.cause = Cause::kPlaced;
  frame.result.position = PairField(object, "place", -kFarthest, kFarthest);
  frame.result.seconds = NumberField(object, "seconds");
  frame.mosaic = SizeField(object, "mosaic", 0, kFarthest);
  frame.position = PairField(object, "position", 0, kFarthest);
  frame.boxMin = PairField(object, "boxMin", INT_MIN, INT_MAX);
  frame.boxMax = PairField(object, "boxMax", INT_MIN, INT_MAX);

  JQFrameVerdict& measured = frame.result.measured;
  measured.cause = frame.mosaic.empty() ? JQFrameCause::kFirstFrame : JQFrameCause::kPlaced;
  measured.offset = PairField(object, "offset", -kLongestFrame, kLongestFrame);
  measured.matchCount = static_cast<int>(WholeField(object, "matches", 0, INT_MAX));
  measured.pairCount = static_cast<int>(WholeField(object, "pairs", 0, INT_MAX));
  measured.registered = FlagField(object, "registered");
  measured.shiftShare = NumberOrNan(object, "shiftShare");
  measured.brightness = NumberOrNan(object, "brightness");
  measured.brightnessLimit = NumberOrNan(object, "brightnessLimit");
  measured.definition = NumberOrNan(object, "definition");
  measured.definitionLimit = NumberOrNan(object, "definitionLimit");
  measured.motion = NumberOrNan(object, "motion");
  measured.motionLimit = NumberOrNan(object, "motionLimit");
  if (object.contains("doubt")) frame.result.doubt = ReadDoubt(object["doubt"]);

  frame.samples.wide = FlagField(object, "wide");
  frame.samples.bits = static_cast<int>(WholeField(object, "bits", 8, 16));
  frame.samples.found = FlagField(object, "bitsFound");
  frame.samples.saturatedFrames =
      static_cast<int>(WholeField(object, "saturatedFrames", 0, INT_MAX));
  frame.samples.grey = FlagField(object, "grey");
  return frame;
}

PictureEntry ReadPictureEntry(const json& object) {
  PictureEntry picture;
  picture.trim = FlagField(object, "trim");
  picture.without = ListField(object, "without", 1, kMostNumber);
  SaveOptions& save = picture.save;
  save.path = TextField(object, "path");
  save.grey = FlagField(object, "grey");
  save.scaleBar = FlagField(object, "scaleBar");
  save.compression = static_cast<Compression>(
      WholeField(object, "compression", 0, static_cast<int>(Compression::kJpeg)));
  save.quality = static_cast<int>(WholeField(object, "quality", 1, 100));
  if (object.contains("pixelWidth")) {
    save.pixelSize.emplace(NumberField(object, "pixelWidth"), NumberField(object, "pixelHeight"));
    if (save.pixelSize->width <= 0 || save.pixelSize->height <= 0) {
      throw InputError("its field \"pixelWidth\" or \"pixelHeight\" is no length");
    }
  } else if (save.scaleBar) {
    throw InputError("its field \"pixelWidth\" is missing");
  }
  if (!object.contains("background")) return picture;
  const std::vector<int> colour = ListField(object, "background", 0, 255);
  if (colour.size() != 3) throw InputError("its field \"background\" is no colour");
  save.background = {colour[0], colour[1], colour[2]};
  return picture;
}

}  // namespace

json EntryJson(const JournalEntry& entry) {
  return std::visit([](const auto& kind) { return ToJson(kind); }, entry);
}

JournalEntry ReadEntry(const json& object) {
  const std::string kind = TextField(object, "entry");
  if (kind == "frame") return ReadFrame(object);
  if (kind == "continue") {
    return ContinueEntry{NumberOf(object), PairField(object, "place", -kFarthest, kFarthest)};
  }
  if (kind == "undo") return UndoEntry{NumberOf(object)};
  if (kind == "picture") return ReadPictureEntry(object);
  throw InputError("it is an entry of an unknown kind, \"" + kind + "\"");
}

}  // namespace jqhost
