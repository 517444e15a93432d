#include <pybind11/stl.h>

#include <cstdint>
#include <exception>
#include <fstream>
#include <optional>
#include <utility>

#include "arrays.h"
#include "bindings.h"
#include "file_run.h"
#include "host/output/atomic_file.h"
#include "host/output/picture_format.h"
#include "host/output/save_picture.h"
#include "host/output/thumbnail.h"
#include "host/source/header_size.h"
#include "host/source/path_list.h"
#include "to_python.h"

namespace py = pybind11;

namespace jqpython {
namespace {

/// Tells the caller's progress function about every file. Whatever it raises, or a Ctrl-C,
/// ends the run after the file in hand and is raised again then.
class PythonObserver : public jqhost::RunObserver {
 public:
  PythonObserver(const py::object& progress, jqhost::StopToken& stop)
      : m_progress(progress), m_stop(stop) {}

  void OnBegin(int total) override { m_total = total; }

  void OnFrame(const jqhost::FrameResult& result, int done) override {
    if (m_raised) return;
    const py::gil_scoped_acquire held;
    try {
      if (PyErr_CheckSignals() != 0) throw py::error_already_set();
      if (!m_progress.is_none()) m_progress(done, m_total, VerdictOf(result));
    } catch (...) {
      m_raised = std::current_exception();
      m_stop.Request();
    }
  }

  void RaiseAgain() const {
    if (m_raised) std::rethrow_exception(m_raised);
  }

 private:
  const py::object& m_progress;
  jqhost::StopToken& m_stop;
  int m_total = 0;
  std::exception_ptr m_raised;
};

/// A run with the order of its arrays.
struct Result {
  FileRun run;
  ChannelOrder order = ChannelOrder::kRgb;
};

std::vector<std::string> PathTexts(const py::object& paths) {
  const bool isOne = py::isinstance<py::str>(paths) || py::isinstance<py::bytes>(paths) ||
                     py::hasattr(paths, "__fspath__");
  if (isOne) return {PathText(paths)};
  std::vector<std::string> texts;
  for (const py::handle path : paths) {
    texts.push_back(PathText(py::reinterpret_borrow<py::object>(path)));
  }
  return texts;
}

Result StitchPaths(const py::object& paths, const py::object& progress, bool skipBad,
                   const std::string& orderName) {
  const ChannelOrder order = ParseOrder(orderName);
  const std::vector<std::string> texts = PathTexts(paths);
  jqhost::StopToken stop;
  PythonObserver observer(progress, stop);
  Result result;
  result.order = order;
  {
    const py::gil_scoped_release released;
    try {
      result.run = StitchFiles(texts, skipBad, stop, observer);
    } catch (...) {
      observer.RaiseAgain();
      throw;
    }
  }
  observer.RaiseAgain();
  return result;
}

py::array Image(const Result& result) {
  cv::Mat copy;
  {
    const py::gil_scoped_release released;
    copy = InOrder(result.run.Picture(true), result.order);
  }
  return OwnArray(copy);
}

void SaveResult(Result& result, const py::object& path, const std::optional<double>& pixelSize,
                const std::optional<std::array<int, 3>>& background, bool trim) {
  FileRun& run = result.run;
  jqhost::SaveOptions options = SaveOptionsOf(run, PathText(path), PixelMetres(pixelSize));
  options.background = CheckColour(background);
  const cv::Mat picture = run.Picture(trim);
  {
    const py::gil_scoped_release released;
    jqhost::CheckPictureFormat(options.path);
    jqhost::SavePicture(picture, options, jqhost::SaveProgress(), jqhost::StopToken());
  }
  // For the reports, whose positions are those of the trimmed picture.
  if (!trim) return;
  run.record.picture = options.path;
  run.record.pixelSize = options.pixelSize;
  run.record.background = options.background;
}

void SaveReport(const Result& result, const py::object& path) {
  const std::string file = PathText(path);
  const jqhost::RunRecord record = result.run.record;
  const cv::Mat picture = result.run.Picture(true);
  const py::gil_scoped_release released;
  const std::string text = jqhost::PictureExtension(file) == ".json"
                               ? JsonReportOf(record)
                               : HtmlReportOf(record, picture);
  jqhost::WriteFileAtomically(file, text.data(), text.size());
}

constexpr char kStitchDoc[] = R"(Stitches picture files of one size, in order.

paths: files and folders, one or several. A folder is taken in natural order, 2 before 10; of a
    TIFF every page is a frame.
progress: called as progress(done, total, verdict) for every file, on this thread. What it raises
    ends the run after the file in hand and comes out of this call.
skip_bad: leave out files that cannot be read and those of another size than most; otherwise they
    refuse the run with `InputError`.
order: 'rgb' or 'bgr', how the colours of a pixel follow each other in the result's image.

The picture is that of `jqstitch batch` with the same files, bit for bit.)";

}  // namespace

void BindFiles(py::module_& module) {
  py::class_<Result>(module, "Result", "The end of `stitch_files`.")
      .def_property_readonly("image", &Image,
                             "A copy of the picture, cut to the placed frames and black where "
                             "nothing is: uint8 array (H, W, 3).")
      .def_property_readonly(
          "frames", [](const Result& r) { return VerdictsOf(r.run); },
          "The verdict on every file, in their order.")
      .def_property_readonly(
          "outcome",
          [](const Result& r) { return jqhost::OutcomeName(jqhost::OutcomeOf(r.run.record)); },
          "'all placed', 'some doubtful', 'some left out' or 'none placed'.")
      .def_property_readonly(
          "seconds", [](const Result& r) { return r.run.record.seconds; }, "How long the run took.")
      .def(
          "report",
          [](const Result& r) {
            return py::module_::import("json").attr("loads")(JsonReportOf(r.run.record));
          },
          "The whole report as a dictionary: outcome, counts, settings, every file.")
      .def("save_report", &SaveReport, py::arg("path"),
           "Writes the report: .json, or else an HTML page that needs no other file.")
      .def("save", &SaveResult, py::arg("path"), py::arg("pixel_size") = py::none(),
           py::arg("background") = py::none(), py::arg("trim") = true,
           "Writes the picture; the arguments are those of `Stitcher.save`.")
      .def(
          "thumbnail",
          [](const Result& r) {
            const auto jpeg = jqhost::Thumbnail(r.run.Picture(true));
            return py::bytes(reinterpret_cast<const char*>(jpeg.data()), jpeg.size());
          },
          "The picture at no more than 128 pixels a side, as the bytes of a JPEG.")
      .def("__repr__", [](const Result& r) {
        return std::string("<Result ") + OutcomeName(OutcomeOf(r.run.record)) + ": " +
               std::to_string(CountPlaced(r.run.record)) + " of " +
               std::to_string(r.run.record.frames.size()) + " frames>";
      });

  module.def("stitch_files", &StitchPaths, py::arg("paths"), py::arg("progress") = py::none(),
             py::arg("skip_bad") = false, py::kw_only(), py::arg("order") = "rgb", kStitchDoc);
  module.def(
      "list_pictures",
      [](const py::object& folder) {
        py::list paths;
        for (const std::string& path : jqhost::ListPictures(PathText(folder), {})) {
          paths.append(NameText(path));
        }
        return paths;
      },
      py::arg("folder"),
      "The pictures of a folder in the order in which `stitch_files` takes them.");
  module.def(
      "header_size",
      [](const py::object& path) -> std::optional<std::pair<std::uint64_t, std::uint64_t>> {
        std::ifstream file(PathText(path), std::ios::binary);
        const std::optional<jqhost::HeaderSize> size = jqhost::ReadHeaderSize(file);
        if (!size) return std::nullopt;
        return std::make_pair(size->width, size->height);
      },
      py::arg("path"),
      "(width, height) of a picture file as its header announces it, without decoding it. None "
      "where the header does not tell.");
}

}  // namespace jqpython
