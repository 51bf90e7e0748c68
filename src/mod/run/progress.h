// A line on a terminal for whoever waits for a long run.
#pragma once

namespace ostrel {

/// As long as it lives, a run that has taken more than a second shows its step, the functions that
/// the step is through with, and the seconds, in one line of standard error: on a terminal, and
/// only there, without --quiet and -GUI. The only one at a time.
class Progress {
 public:
  Progress();
  Progress(const Progress&) = delete;
  Progress& operator=(const Progress&) = delete;
  ~Progress();
};

}  // namespace ostrel
