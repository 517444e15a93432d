#ifndef JQIMAGESTITCHING_H
#define JQIMAGESTITCHING_H

#include <QList>
#include <QObject>
#include <QString>
#include <cstdint>
#include <memory>
#include <opencv2/core.hpp>

#include "jqframeverdict.h"
#include "jqstitchingalgorithm.h"
#include "jqstitchingstate.h"

/// The host's raw image record, 1024 bytes, defined by the host's shared header
/// `jqglobalclass.h`.
struct _tagJQIMG;

/// Four 32-bit ints: x1, y1 inclusive, x2, y2 exclusive, canvas pixels.
struct JQStitchingRect {
  std::int32_t x1 = 0;
  std::int32_t y1 = 0;
  std::int32_t x2 = 0;
  std::int32_t y2 = 0;
};

/// The stitcher: the one object that a host talks to.
///
/// Live run: hand `Stitching` one camera frame after another; every call returns
/// a record that shows the mosaic so far. Batch run: fill `m_fileList`, connect
/// the signals, invoke the slot. A stitcher serves one live run or any number of
/// batch runs; do not mix them, and take a new stitcher for a new live run.
///
/// Coordinates: mosaic pixels, x to the right, y downwards, origin at the
/// mosaic's top-left corner; growth at the top or left moves every position.
///
/// Ownership: records returned belong to the stitcher and are the same record
/// on every call; its pixel pointer is valid until the next call that replaces
/// the matrix behind it. Frames handed in are copied and may be reused at once.
///
/// Threads: one thread at a time; none are started, no locks are taken. The
/// batch slot may run on another thread; the host then waits for
/// `sglMultiImageProcessFinished`, except for `RequestStop`, which any thread may
/// call. The const accessors and `RequestStop` may also be called from a directly
/// connected receiver of a batch signal.
///
/// Errors: the return values named at each method; `cv::Exception` and
/// `std::bad_alloc` pass through. A call of `Stitching` that throws leaves the
/// mosaic, its content box, the position, the reference and the counters as they
/// were, so that the run can go on and be saved.
class JQ_STITCHING_EXPORT JQImageStitching : public QObject {
  Q_OBJECT

 private:
  JQStitchingAlgorithm* m_pAlgorithm;  // owned
  cv::Point m_canvasOrigin;            // never changed or read

 public:
  // --- canvas state, for the host to read and write ------------------------
  std::int32_t m_canvasRows;  ///< 10000; rows of `m_resultMat`
  std::int32_t m_canvasCols;  ///< 10000; columns of `m_resultMat`
  cv::Size m_frameSize;       ///< 5000 x 5000; one frame
  cv::Point m_framePos;       ///< top-left corner of the newest frame in `m_resultMat`
  std::int32_t m_frameRows;   ///< 0; rows of one frame, the growth step
  std::int32_t m_frameCols;   ///< 0; columns of one frame, the growth step
 private:
  cv::Point m_lastOffset;  // zeroed, not used

 public:
  cv::Point m_frameOffset;        ///< displacement of the next frame, set by the host
  JQStitchingRect m_cutRect;      ///< trimming rectangle, written by `findCutPoint`
  JQStitchingRect m_contentRect;  ///< bounding box of all frames on the canvas
 private:
  cv::Mat m_curFrame;

 public:
  cv::Mat m_resultMat;  ///< the canvas, 8-bit, 1 or 3 channels
 private:
  bool m_bLastFrameAccepted;  // verdict of the last acceptance test of a live run
  bool m_bStitchStarted;
  std::int32_t m_nFrameCount;
  std::int32_t m_nReserved;
  cv::Mat m_refFrame;
  _tagJQIMG* m_pOutImage;  // owned, made by the first live frame

 public:
  QList<QString> m_fileList;  ///< image files of a batch run, in stitching order

 private:
  cv::Mat m_spareMat;           // not used
  std::int64_t m_reservedWord;  // zeroed, not used
  cv::Point m_mosaicMin;        // inclusive
  cv::Point m_mosaicMax;        // exclusive
  cv::Mat m_mosaic;
  std::int32_t m_reservedPair[2];  // zeroed, not used
  std::int32_t m_nOverlapMode;     // these four are unset until a run starts
  std::int32_t m_nStitchState;
  float m_fMinOverlap;
  float m_fMaxOverlap;

 public:
  JQImageStitching();
  ~JQImageStitching() override;

  // --- size and position -----------------------------------------------------
  /// Bytes of the content box as 8-bit three-channel pixels; wraps beyond 2^31.
  int GetCurImageSize() const;
  /// Size of the content box; (0, 0) before the mosaic exists. Can be negative,
  /// see `GetPlacedBounds`.
  cv::Size GetCurSize() const;
  /// Whether the last registration found more than 10 matches.
  bool IsOffsetPointValid() const;
  /// The last measured offset when it is valid, else (0, 0). An accepted live
  /// frame leaves (0, 0).
  cv::Point GetOffsetPosition() const;
  /// Top-left corner of the newest accepted frame in the mosaic.
  cv::Point GetCurrentPosition() const;

  // --- live run --------------------------------------------------------------
  /// Takes one camera frame. Registers it, and grows and paints the mosaic when
  /// the overlap, the matches (11 or more) and the shift (more than 10 % and less
  /// than 90 % of the frame along the larger component) allow. The three ints
  /// count on the first frame only. Returns the stitcher's record (the first
  /// frame, later the whole mosaic), or null for a null `img`. Sizes beyond 65535
  /// are cut to 16 bits in the record; `GetMosaic` tells the true ones.
  /// @param nOverlapMode 0: overlap quality test; otherwise: motion test
  /// @param nDetectLevel working-scale divisor, 1 or more
  /// @param nCornerBudget corners kept: (budget + 8) * (580 - 80 * level) / 16
  _tagJQIMG* Stitching(_tagJQIMG* img, int nOverlapMode, int nDetectLevel, int nCornerBudget);

  // --- canvas driven by the host --------------------------------------------
  // Sums of positions, offsets and sizes wrap where they leave 32 bits. A null frame
  // changes nothing.

  /// Places a first frame in the middle of a black canvas of twice its size.
  void initResultMat(cv::Mat* frame);
  /// Grows the canvas by whole frame sizes so that the frame fits at
  /// `m_framePos` + `m_frameOffset`. Only the frame's size is used.
  void extendResultMat(cv::Mat* frame);
  /// Widens `m_contentRect` by the frame at `m_framePos` and copies it to
  /// `m_cutRect`. Only the frame's size is used.
  void findCutPoint(cv::Mat* frame);
  /// Gives every pure black pixel of the current picture the bytes c0, c1, c2
  /// (blue, green, red; low 8 bits). False when there is no picture.
  bool ChangeStitchingBackground(int c0, int c1, int c2);

  // --- trimming and output ----------------------------------------------------
  /// Makes the current picture a deep copy of the mosaic's content box. False
  /// before the mosaic exists; an unusable box raises `cv::Exception`.
  bool CutEdge();
  /// The same; returns the stitcher's record of the picture, or `img` unchanged. Trims
  /// without an `img` too, and returns null then.
  _tagJQIMG* CutEdge(_tagJQIMG* img);
  /// The stitcher's record of the current picture (the newest frame during a
  /// run, the trimmed mosaic after trimming), or null without one or without an `img`.
  /// No pixels are copied.
  _tagJQIMG* GetImageStitching(_tagJQIMG* img);
  /// Writes the current picture in the format of the path's extension. False
  /// when there is no picture, the path is empty or the write fails; an unknown
  /// extension raises `cv::Exception`.
  bool SaveImageStitching(const QString& path);

  // --- additions: what became of a frame --------------------------------------
  /// Whether the newest frame, live or batch, is part of the mosaic. True for
  /// the first frame of a run, which the mosaic starts with; false before a run and
  /// after a frame whose call raised an exception.
  bool IsLastFrameAccepted() const;
  /// Number of the next frame pair: 0 at the start of a run, 1 after the second
  /// frame, one more for every accepted frame.
  int GetFrameCount() const;
  /// The record of the last stitch, by value. It keeps what an earlier frame left
  /// where a frame has no corners.
  stitchflags GetStitchFlags() const;
  /// A header on the mosaic's pixels: read only, valid until the next call.
  cv::Mat GetMosaic() const;
  /// Corners of the content box, inclusive and exclusive, as the library keeps
  /// it. The rule that widens it is deliberately coarse: the box can be smaller
  /// than the placed frames and even inverted. `GetPlacedBounds` is exact.
  cv::Point GetContentMin() const;
  cv::Point GetContentMax() const;
  /// The exact union of the frames placed in this run, mosaic pixels; empty
  /// before the mosaic exists.
  cv::Rect GetPlacedBounds() const;
  /// What became of the newest frame, live or batch, and by which numbers. During a
  /// batch run it changes with every file, before that file's progress signal. A null
  /// `img` and a refused batch run leave it.
  JQFrameVerdict GetLastVerdict() const;

  // --- additions: ending a batch run ------------------------------------------
  /// Ends a batch run after the file in hand: with its progress signal, and then the
  /// finished signal with what has been stitched, an empty matrix if that is the first
  /// file alone. Sets a flag that the start of every batch run clears; a live run does
  /// not read it.
  void RequestStop();

  // --- additions: a live run that is taken back, taken up elsewhere and kept -----
  // None of these is for a batch run. The record that `Stitching` returned stays the
  // same one; `UndoLastFrame`, `ContinueAt` and `RestoreState` make it show the mosaic, or
  // the current picture before the mosaic exists. Pixel pointers and headers taken before
  // such a call are not to be used after it. A call that raises an exception has changed
  // nothing.

  /// How many placed frames can be taken back, 0 from the start and for a negative number;
  /// what lies further back is dropped at once. Counts from the next frame on. Each step
  /// keeps what the frame painted over, the reference and the previous frame: at level 1
  /// three pictures of a frame's size. 0 costs neither time nor memory.
  void SetUndoDepth(int frames);
  /// How many calls of `UndoLastFrame` will succeed. A batch run drops them all.
  int GetUndoCount() const;
  /// Takes the newest placed frame out again, or the newest `ContinueAt` back. Everything
  /// is as right before the call that placed it: the mosaic's size and pixels, the content
  /// box, placed bounds, position, frame count, stitch record, verdict, reference and
  /// current picture. Frames that were left out since are forgotten as well. False, and
  /// nothing changed, when there is nothing to take back. What a host wrote into the
  /// mosaic outside of the frame stays. Taking growth back needs memory only where
  /// somebody else has a header on the mosaic.
  bool UndoLastFrame();

  /// Goes on elsewhere in the mosaic: the frame-sized block with this top-left corner,
  /// mosaic pixels, becomes reference and current picture, as if the frame placed there
  /// were the newest. `GetCurrentPosition` is that place, the offset (0, 0), and the next
  /// frame is measured against the block. The frame count and the verdict stay. Can be
  /// taken back. False, and nothing changed, before the mosaic exists, where the block does
  /// not lie inside it, and where the block holds an empty (black) pixel.
  bool ContinueAt(const cv::Point& topLeft);

  /// Deep copies of all that the live run consists of; `started` is false without one.
  JQStitchingState SaveState() const;
  /// Puts deep copies of a saved run in place of the one at hand. From then on this
  /// stitcher behaves like the one that the state was taken from; a state that was not
  /// started makes it wait for a first frame. A state that makes no sense raises
  /// `cv::Exception`.
  void RestoreState(const JQStitchingState& state);

  /// Most bytes that the mosaic's pixels may take; 0, the value from the start, and below:
  /// any number. A frame for which the mosaic would have to start or to grow beyond that
  /// raises `cv::Exception` (`StsNoMem`): it is left out, the run is as before and can be
  /// saved, and `JQFrameVerdict::mosaicBytesNeeded` tells the size. A mosaic that is
  /// larger already stays.
  void SetMemoryLimit(std::int64_t bytes);

 Q_SIGNALS:
  /// One progress line per file of a batch run.
  void sglMultiImageProcessStatus(const QString& text);
  /// Once per batch run: the trimmed mosaic (a `cv::Mat*` that belongs to the
  /// stitcher), or null when the run was refused because the files differ in size,
  /// one is unreadable or the list is empty. Does not come when an exception leaves the
  /// slot: a file that can no longer be read, or a content box that is unusable.
  void sglMultiImageProcessFinished(void* dst);
  /// Reserved for the host; the library does not emit it.
  void sglSystemMemoryNotEnough();

 private Q_SLOTS:
  void slotStartStitching();

 private:
  Q_DISABLE_COPY(JQImageStitching)

  struct RunState;
  std::unique_ptr<RunState> m_pRun;  // additions to the run state above
};

#endif  // JQIMAGESTITCHING_H
