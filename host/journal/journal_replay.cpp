#include "host/journal/journal_replay.h"

#include "host/input_error.h"
#include "host/journal/journal_reader.h"
#include "host/size_text.h"
#include "host/source/image_record.h"

namespace jqhost {
namespace {

class Replay {
 public:
  Replay(const StitchSettings& settings, ReplayedRun& run) : m_settings(settings), m_run(run) {
    m_engine.SetParameter(settings.detectLevel, settings.cornerBudget, settings.overlapMode,
                          settings.usePresets ? 1 : 0);
    m_run.state.started = true;
    m_run.state.overlapMode = settings.overlapMode;
    m_run.state.detectLevel = settings.detectLevel;
    m_run.state.cornerBudget = settings.cornerBudget;
  }

  void TakeFirst(const cv::Mat& picture) {
    m_run.firstFrame = AsTakenIn(picture);
    m_run.lastFrame = m_run.firstFrame;
    Now().reference = m_run.firstFrame.clone();
    Now().current = Now().reference;
    Now().verdict.cause = JQFrameCause::kFirstFrame;
  }

  void GoOnAt(cv::Point place) {
    if (m_run.state.mosaic.empty()) StartMosaic();
    m_run.continueAt = place + m_run.origin;
  }

  void Place(const FrameEntry& frame, const cv::Mat& picture) {
    if (m_run.state.mosaic.empty()) StartMosaic();
    m_run.lastFrame = picture;
    stitchflags flags = Now().record;
    if (m_run.continueAt) {
      flags.positionX = m_run.continueAt->x;
      flags.positionY = m_run.continueAt->y;
      m_run.continueAt.reset();
    }
    const cv::Point offset = frame.result.measured.offset;
    flags.offsetX = offset.x;
    flags.offsetY = offset.y;
    const cv::Point old(flags.positionX, flags.positionY);
    cv::Point position = old;
    cv::Mat fresh = AsTakenIn(picture);
    // Growth copies into other memory; the pixels in hand are nobody else's.
    m_engine.StitchingImage_imageblend(m_run.state.mosaic, fresh, flags, Now().contentMin,
                                       Now().contentMax, old, Now().contentMin, Now().contentMax,
                                       position, m_run.state.mosaic, Now().reference);
    const cv::Point moved = position - (old + offset);
    m_run.origin += moved;
    Now().placedBounds = (Now().placedBounds + moved) | cv::Rect(position, Now().reference.size());
    Now().current = fresh;
    Now().record.positionX = position.x;
    Now().record.positionY = position.y;
    Now().record.matchCount = frame.result.measured.matchCount;
    Now().record.overlapFlag = 1;
    Now().verdict = frame.result.measured;
    ++Now().frameCount;
  }

  // What the log tells of the mosaic after this frame, when all before it is as it was.
  void Check(const FrameEntry& frame) const {
    const cv::Mat& mosaic = m_run.state.mosaic;
    const cv::Point position(m_run.state.now.record.positionX, m_run.state.now.record.positionY);
    if (mosaic.size() != frame.mosaic) {
      throw InputError("its field \"mosaic\" says " + SizeText(frame.mosaic) +
                       ", but its frames make a mosaic of " + SizeText(mosaic.size()));
    }
    if (position != frame.position) {
      throw InputError("its field \"position\" is not where its frame comes to lie");
    }
    if (m_run.state.now.contentMin != frame.boxMin || m_run.state.now.contentMax != frame.boxMax) {
      throw InputError("its fields \"boxMin\" and \"boxMax\" are not the box of its frames");
    }
  }

 private:
  JQStitchingMoment& Now() { return m_run.state.now; }

  // The engine starts the mosaic when the second frame is compared with the first. A blank
  // frame does as well: it shows no corners, so that nothing is measured.
  void StartMosaic() {
    const cv::Mat blank(m_run.firstFrame.size(), m_run.firstFrame.type(), cv::Scalar::all(128));
    m_engine.StitchingImage_offset(0, m_run.firstFrame.clone(), blank, blank.clone(),
                                   Now().contentMin, Now().contentMax, m_run.state.mosaic,
                                   m_engine.m_stitchFlags);
    Now().record = m_engine.m_stitchFlags;
    m_run.state.frameSize = cv::Size(m_engine.m_nImageCols, m_engine.m_nImageRows);
    Now().placedBounds = cv::Rect(Now().contentMin, Now().contentMax);
    m_run.origin = Now().contentMin;
    Now().frameCount = 1;
  }

  StitchSettings m_settings;
  JQStitchingAlgorithm m_engine;
  ReplayedRun& m_run;
};

// Of a damaged journal the part before the damage can still be used.
[[noreturn]] void Refuse(const std::string& what, int lastGood) {
  throw InputError(what + (lastGood > 0 ? " (--until " + std::to_string(lastGood) +
                                              " uses what was recorded before it)"
                                        : std::string()));
}

}  // namespace

std::optional<ReplayedRun> ReplayRun(
    const JournalFolder& folder, const JournalSteps& steps,
    const std::function<bool(const FrameEntry&, const cv::Mat&)>& onFrame) {
  ReplayedRun run;
  Replay replay(folder.Header().stitch, run);
  int lastFrame = 0, lastStep = 0;
  bool asRecorded = true;  // no step was taken out from under the later ones
  for (const JournalStep& step : steps.Steps()) {
    asRecorded = asRecorded && step.before == lastStep;
    try {
      if (!step.frame) {
        replay.GoOnAt(step.place);
      } else {
        const cv::Mat picture = ReadFrameFile(folder, *step.frame);
        if (!onFrame(*step.frame, picture)) return std::nullopt;
        if (lastFrame == 0) {
          replay.TakeFirst(picture);
        } else {
          replay.Place(*step.frame, picture);
          if (asRecorded) replay.Check(*step.frame);
        }
        lastFrame = step.number;
      }
    } catch (const InputError& wrong) {
      Refuse("recorded frame " + std::to_string(step.number) + ": " + wrong.what(), lastFrame);
    } catch (const cv::Exception& raised) {
      if (raised.code == cv::Error::StsNoMem) throw InputError("there is not enough memory");
      Refuse("recorded frame " + std::to_string(step.number) + " cannot be placed: " + raised.err,
             lastFrame);
    }
    lastStep = step.number;
  }
  return run;
}

}  // namespace jqhost
