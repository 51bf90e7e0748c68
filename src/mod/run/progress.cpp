#include "run/progress.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <utility>

#include "run/heart.h"
#include "run/options.h"
#include "run/system.h"

namespace ostrel {
namespace {

using Clock = std::chrono::steady_clock;

constexpr auto patience = std::chrono::seconds(1);         // a shorter run shows nothing
constexpr auto interval = std::chrono::milliseconds(100);  // between two lines

struct ShownLine {
  Clock::time_point start;
  Clock::time_point next;  // not before then
  std::string_view step;
  std::int64_t functions = 0;
  bool isShown = false;
};

ShownLine& line() {
  static ShownLine instance;
  return instance;
}

void hide() {
  if (std::exchange(line().isShown, false)) writeToStandardError("\033[K");
}

/// The cursor goes back to the beginning, so that a message takes the place of the line.
int show() {
  ShownLine& own = line();
  const std::string_view step = currentStep();
  if (step.empty()) {
    hide();
    return 0;
  }
  if (step != own.step) own.functions = 0;
  own.step = step;
  ++own.functions;
  const Clock::time_point now = Clock::now();
  if (now < own.next) return 0;
  own.next = now + interval;
  own.isShown = true;
  const auto seconds = std::chrono::duration_cast<std::chrono::seconds>(now - own.start).count();
  const std::string text = std::string(step) + ": " + std::to_string(own.functions) +
                           " functions, " + std::to_string(seconds) + " s\033[K\r";
  writeToStandardError(text.c_str());
  return 0;
}

}  // namespace

Progress::Progress() {
  if (options().gui || options().quiet || !isErrorWatched()) return;
  line() = {Clock::now(), Clock::now() + patience, {}, 0, false};
  setHeartBeat(show);
}

Progress::~Progress() {
  if (options().gui) return;
  setHeartBeat(nullptr);
  hide();
  line() = {};
}

}  // namespace ostrel
