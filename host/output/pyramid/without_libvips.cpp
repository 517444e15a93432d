// Stands for what libvips does in a build without libvips.
#include "host/input_error.h"
#include "host/output/pyramid/pyramid.h"

namespace jqhost {
bool HasLibvips() {
  return false;
}

bool WriteDeepZoom(const PixelSource&, const SaveOptions& options, const std::string&,
                   const std::string&, const SaveProgress&, const StopToken&) {
  throw InputError("cannot write '" + options.path + "': this program was built without libvips");
}

}  // namespace jqhost
