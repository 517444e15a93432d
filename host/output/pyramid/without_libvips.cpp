// Stands for the writers of pyramids in a build without libvips.
#include "host/input_error.h"
#include "host/output/pyramid/pyramid.h"

namespace jqhost {
namespace {

[[noreturn]] void Refuse(const SaveOptions& options) {
  throw InputError("cannot write '" + options.path + "': this program was built without libvips");
}

}  // namespace

bool HasLibvips() {
  return false;
}

bool WriteOmeTiff(const PixelSource&, const SaveOptions& options, const std::string&,
                  const SaveProgress&, const StopToken&) {
  Refuse(options);
}

bool WriteTiff(const PixelSource&, const SaveOptions& options, const std::string&,
               const SaveProgress&, const StopToken&) {
  Refuse(options);
}

bool WriteDeepZoom(const PixelSource&, const SaveOptions& options, const std::string&,
                   const std::string&, const SaveProgress&, const StopToken&) {
  Refuse(options);
}

}  // namespace jqhost
