// The settings of a run.
#pragma once

#include <string>

namespace ostrel {

/// Which set of an Equation is meant: the choices of -ck, -ce, -ar, -ap and -oe, and the argument
/// of every operation that works on sets.
enum class SetSelector : unsigned char {
  Off = 0,
  On = 1,
  Both = 2,  ///< both sets, or the smaller of the two, as the operation says
  Smaller = Both,
};

/// How much work --minimize may do for a function.
enum class MinimizeEffort : unsigned char { None, Fast, Normal, Deep };

/// Written by parseCommandLine alone and only read from then on.
struct Options {
  std::string input;
  std::string output;       ///< derived from the input's name if not given
  std::string percentFile;  ///< the companion without percent marks
  std::string log;          ///< empty: standard output
  std::string err;          ///< empty: standard error
  std::string report;       ///< --report: what was done to each function; "-": a table
  std::string module;       ///< if not empty, replaces the MODULE property

  bool help = false;       ///< --help: a page about the options in place of a run
  bool version = false;    ///< --version
  std::string completion;  ///< --completion: the shell for which a script is wanted

  SetSelector type = SetSelector::On;  ///< accepted and read by nothing

  // Control equations: product terms allowed (no option changes that) and the set to keep.
  int ckLimit = 1;
  SetSelector ckMode = SetSelector::On;
  int ceLimit = 1;
  SetSelector ceMode = SetSelector::On;
  int arLimit = 1;
  SetSelector arMode = SetSelector::On;
  int apLimit = 1;
  SetSelector apMode = SetSelector::On;
  int oeLimit = 1;
  SetSelector oeMode = SetSelector::On;

  int splitMax = 0;               ///< most product terms of an equation; below 2 no splitting
  int shareMin = 0;               ///< least equations and terms that are worth sharing
  int clusterSize = 5;            ///< product terms of a cluster of the target device
  bool xorSynthesis = false;      ///< -xor
  bool noXorOnT = false;          ///< -nxt: no XOR synthesis on T registers
  bool ffBeforeInverter = false;  ///< -ff_inv
  bool swapSetReset = true;       ///< -sr
  bool speed = false;             ///< -speed: splitting without the search for shared terms
  bool reduce = true;             ///< -reduce none clears it
  bool invert = true;             ///< -invert
  bool internalFeedback = true;   ///< -ifb
  bool percent = false;           ///< -percent: inverted outputs carry '%' in place of '-'
  bool lossless = false;          ///< --lossless: no step gives a function up
  bool verify = false;            ///< --verify: no output that isn't proven
  MinimizeEffort minimize = MinimizeEffort::None;  ///< --minimize: each function in few terms
  int factorPrice = 0;  ///< --factor: what a node costs, in terms; 0 without it, -1: clusterSize
  int factorDepth = 0;  ///< --depth: most nodes one behind another; 0 for no limit
  bool best = false;    ///< --best: stands for others, which the parser sets
  bool strict = false;  ///< --strict: a word that does nothing ends the run
  bool quiet = false;   ///< --quiet: no line of progress on a terminal
  bool gui = false;     ///< -GUI: a monitoring host runs this process
};

/// The options of the present run.
const Options& options();

/// Replaces the options of the present run; for the run that has parsed them and for tests.
void setOptions(Options values);

}  // namespace ostrel
