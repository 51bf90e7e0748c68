// The settings of the run that is judged, as far as they decide what its output may look like.
//
// The verifier reads the words of the optimizer's command line by itself, by the same rules: four
// characters of a word are enough, case does not matter, and what is unknown is passed over.
#pragma once

#include <string>
#include <vector>

namespace ostrel::verify {

/// Which set of a control function the run keeps.
enum class SetChoice { Off, On, Smaller };

struct RunOptions {
  SetChoice clock = SetChoice::On;
  SetChoice clockEnable = SetChoice::On;
  SetChoice reset = SetChoice::On;
  SetChoice set = SetChoice::On;
  SetChoice outputEnable = SetChoice::On;
  int splitMax = 0;
  int clusterSize = 5;
  bool xorSynthesis = false;
  bool reduce = true;
  bool ffBeforeInverter = false;
  bool swapSetReset = true;
  bool speed = false;
  bool invert = true;
};

/// Reads the words behind the two file names. Words that name files of the run are passed over.
RunOptions readRunOptions(const std::vector<std::string>& words);

/// Puts the words of each option file in the place of its `@` word, through five levels at most.
/// A file that can't be read adds nothing.
std::vector<std::string> expandOptionFiles(std::vector<std::string> words);

}  // namespace ostrel::verify
