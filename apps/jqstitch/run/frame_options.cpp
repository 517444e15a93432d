#include "run/frame_options.h"

#include <CLI/CLI.hpp>

namespace jqstitch {
namespace {

void AddDepthOption(CLI::App& command, jqhost::PreparationSettings& settings) {
  command
      .add_option_function<std::string>(
          "--depth",
          [&settings](const std::string& text) {
            settings.depth = jqhost::kFindDepth;
            if (text == "auto") return;
            if (!CLI::detail::lexical_cast(text, settings.depth) ||
                !jqhost::IsSampleDepth(settings.depth)) {
              throw CLI::ValidationError("--depth",
                                         "'" + text + "' is none of auto, 8, 10, 12, 14, 16");
            }
          },
          "significant bits of 16-bit samples: 8, 10, 12, 14, 16, or auto, the fewest that hold "
          "the first frame (auto)")
      ->type_name("BITS");
}

}  // namespace

void AddFrameOptions(CLI::App& command, jqhost::PreparationSettings& settings) {
  AddDepthOption(command, settings);
  command
      .add_option("--flat", settings.flat,
                  "even out the light with this picture of an empty field (see jqstitch flat)")
      ->type_name("FILE");
  command
      .add_option("--dark", settings.dark,
                  "take this picture, made without light, off every frame (and off --flat)")
      ->type_name("FILE");
}

}  // namespace jqstitch
