#include <pybind11/stl.h>

#include "arrays.h"
#include "bindings.h"
#include "live_stitcher.h"
#include "to_python.h"

namespace py = pybind11;

namespace jqpython {
namespace {

constexpr char kClassDoc[] = R"(Stitches frames one after another into a growing mosaic.

overlap_mode: 'quality' compares each frame with the mosaic before it is placed, 'motion' with
    the frame before it.
detect_level: works at 1/N of the size, 1 to 7; mosaic and positions are as small.
corner_budget: more corners are slower and surer, 0 to 100.
undo_depth: how many placed frames `undo` can take back; each keeps three pictures of a
    frame's size.
memory_limit: most bytes of the mosaic, 0 for any number.
order: 'rgb' or 'bgr', how the colours of a pixel follow each other in frames and mosaics.

Positions are (x, y) in pixels of the mosaic, x to the right, y downwards. Growth at the top
or left moves them all. Black, (0, 0, 0), means that nothing is there; black samples of frames are
made 2.

Work is done while other threads run Python. Stitchers are independent of each other; calls of
several threads on one stitcher wait for each other.)";

constexpr char kAddDoc[] = R"(Takes a frame, and places it if it fits.

frame: uint8 array (H, W), (H, W, 3) or (H, W, 4), any strides; alpha is not looked at. It is
    copied. All frames of a run have the height and width of the first.

`MemoryError` where the mosaic would have to grow beyond `memory_limit` or beyond what can be had;
the frame is left out then and the run can go on.)";

constexpr char kViewDoc[] = R"(The mosaic without a copy: a read-only uint8 array (H, W, 3), or
None before there is one.

It shows the pixels of the newest call for as long as the mosaic keeps its size: later frames are
painted into the very pixels that it shows, so a view that is read while another thread adds a
frame can show that frame in part. When the mosaic grows, or shrinks by `undo`, or a state
is restored, it goes on in pixels of its own, and the view keeps those it has, as they were
then. It is safe to hold for as long as one likes, also after the stitcher is gone.

Take it anew after every frame, and let it go before the next: while a view is held, growth
copies the mosaic instead of growing it in place, with both in memory.)";

jqhost::StitchSettings MakeSettings(const std::string& mode, int level, int budget) {
  if (mode != "quality" && mode != "motion") {
    throw py::value_error("overlap_mode is 'quality' or 'motion', not '" + mode + "'");
  }
  const auto check = [](const char* name, int value, int least, int most) {
    if (value >= least && value <= most) return;
    throw py::value_error(std::string(name) + " is from " + std::to_string(least) + " to " +
                          std::to_string(most) + ", not " + std::to_string(value));
  };
  check("detect_level", level, 1, 7);
  check("corner_budget", budget, 0, 100);
  jqhost::StitchSettings settings;
  settings.overlapMode = mode == "motion" ? 1 : 0;
  settings.detectLevel = level;
  settings.cornerBudget = budget;
  return settings;
}

/// The stitcher with the order of its arrays.
struct OrderedStitcher {
  OrderedStitcher(const std::string& mode, int level, int budget, int undoDepth,
                  std::int64_t memoryLimit, const std::string& orderName)
      : order(ParseOrder(orderName)),
        stitcher(MakeSettings(mode, level, budget), undoDepth, memoryLimit) {
    if (undoDepth < 0) throw py::value_error("undo_depth is 0 or more");
    if (memoryLimit < 0) throw py::value_error("memory_limit is 0 or more bytes");
  }

  ChannelOrder order;
  LiveStitcher stitcher;
};

py::object Box(const std::optional<std::array<int, 4>>& box) {
  if (!box) return py::none();
  return py::make_tuple((*box)[0], (*box)[1], (*box)[2], (*box)[3]);
}

Verdict Add(OrderedStitcher& self, const py::object& frame) {
  const cv::Mat matrix = FromArray(frame, self.order, "frame");
  const py::gil_scoped_release released;
  return self.stitcher.Add(matrix);
}

py::object Mosaic(const OrderedStitcher& self) {
  cv::Mat copy;
  {
    const py::gil_scoped_release released;
    copy = self.stitcher.CopyMosaic([&](const cv::Mat& m) { return InOrder(m, self.order); });
  }
  return copy.empty() ? py::object(py::none()) : OwnArray(copy);
}

py::object MosaicView(const OrderedStitcher& self) {
  cv::Mat mosaic;
  {
    const py::gil_scoped_release released;
    mosaic = self.stitcher.Mosaic();
  }
  return mosaic.empty() ? py::object(py::none()) : ReadOnlyView(mosaic, self.order);
}

void SaveMosaic(const OrderedStitcher& self, const py::object& path,
                const std::optional<double>& pixelSize,
                const std::optional<std::array<int, 3>>& background, bool trim) {
  MosaicFile file{PathText(path), std::nullopt, CheckColour(background), trim};
  if (pixelSize) file.pixelSize = PixelMetres(pixelSize);
  const py::gil_scoped_release released;
  self.stitcher.Save(file);
}

}  // namespace

void BindStitcher(py::module_& module) {
  using Released = py::call_guard<py::gil_scoped_release>;
  py::class_<SavedRun>(module, "State",
                       "A run as `Stitcher.save_state` found it. Copies of all that it consists "
                       "of; it can be restored any number of times, into any stitcher.");

  py::class_<OrderedStitcher>(module, "Stitcher", kClassDoc)
      .def(py::init<const std::string&, int, int, int, std::int64_t, const std::string&>(),
           py::arg("overlap_mode") = "quality", py::arg("detect_level") = 1,
           py::arg("corner_budget") = 8, py::arg("undo_depth") = 0, py::arg("memory_limit") = 0,
           py::kw_only(), py::arg("order") = "rgb")
      .def("add", &Add, py::arg("frame"), kAddDoc)
      .def_property_readonly("mosaic", &Mosaic,
                             "A copy of the whole mosaic, black where nothing is: uint8 array "
                             "(H, W, 3), which nothing changes later. None before there is one: "
                             "it takes two frames.")
      .def("mosaic_view", &MosaicView, kViewDoc)
      .def_property_readonly(
          "content_box",
          [](const OrderedStitcher& self) {
            const auto box = [&] {
              const py::gil_scoped_release released;
              return self.stitcher.ContentBox();
            }();
            return Box(box);
          },
          "(x0, y0, x1, y1), mosaic pixels, maximum exclusive: the box that the library keeps. Its "
          "rule is coarse on purpose: it can miss a part of the frames and even be inverted. None "
          "before there is a mosaic.")
      .def_property_readonly(
          "placed_bounds",
          [](const OrderedStitcher& self) {
            const auto bounds = [&] {
              const py::gil_scoped_release released;
              return self.stitcher.PlacedBounds();
            }();
            return Box(bounds);
          },
          "(x0, y0, x1, y1), mosaic pixels, maximum exclusive: what the placed frames cover, "
          "exactly, so that mosaic[y0:y1, x0:x1] is the picture. None before there is a mosaic.")
      .def(
          "undo", [](OrderedStitcher& self) { return self.stitcher.Undo(); }, Released(),
          "Takes the newest placed frame out again, or the newest `continue_at` back, with all "
          "that came since. False, and nothing changed, when there is nothing to take back.")
      .def(
          "continue_at",
          [](OrderedStitcher& self, const std::array<int, 2>& corner) {
            const py::gil_scoped_release released;
            return self.stitcher.ContinueAt(cv::Point(corner[0], corner[1]));
          },
          py::arg("corner"),
          "Goes on elsewhere: the next frame is measured against the block of the mosaic whose "
          "top-left corner is (x, y), mosaic pixels. False, and nothing changed, where the block "
          "leaves the mosaic or holds a black pixel.")
      .def(
          "save_state", [](const OrderedStitcher& self) { return self.stitcher.SaveState(); },
          Released(), "Copies of all that the run consists of.")
      .def(
          "restore_state",
          [](OrderedStitcher& self, const SavedRun& state) { self.stitcher.RestoreState(state); },
          Released(), py::arg("state"),
          "Goes on exactly as the stitcher that the state came from would have, with its "
          "settings; the order of the colours stays this stitcher's.")
      .def("save", &SaveMosaic, py::arg("path"), py::arg("pixel_size") = py::none(),
           py::arg("background") = py::none(), py::arg("trim") = true,
           R"(Writes the mosaic: whole or not at all, and an earlier file stays until then.

path: the extension tells the format: .png, .tif, .ome.tif, .jpg, .bmp, .ppm, .dzi.
pixel_size: side of a frame's pixel in micrometres, written where the format can keep it.
background: (red, green, blue) of what no frame covers, 0 to 255 each; black when None.
trim: cut to the placed frames, or the whole mosaic with its border.

Frames that were all (H, W) give a grey picture, unless the background has a colour.)");
}

}  // namespace jqpython
