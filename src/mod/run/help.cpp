#include "run/help.h"

#include <ostream>

namespace ostrel {
namespace {

constexpr std::string_view helpText =
    R"([options] :
-ck [On|off|min]
-ce [On|off|min]
-ar [On|off|min]
-ap [On|off|min]
-oe [On|off|min]
    control equations synthesis for
    ck: clock; ce: clock enable; ar: reset; ap: preset; oe: output enable
    on: allow 1 product term in ON set of the control equation
    off: allow 1 product term in OFF set of the control equation
    min: allow 1 product term in the minimum of ON or OFF set equation
    default to ON set for all control equations
-output filename (output PLA file, default follows input PLA file)
-log filename (default to stdout)
-err filename (default to stderr)
-mod modulename
-ff_inv [yes|No]
    specifiy the flipflop is before the inverter. FF is after the inverter by default.
-sr [Yes|no]
    swap Set/Reset to follow output polarity, effective when "-ff_inv yes"
-percent filename
    apply the percent sign '%' to invert the logic. and output an additional PLA
    file without the inversion character '%'.
-split <maxpt>
    maxpt : maximum number of product terms per equation, default to 16
-share <num>
    num: minimum number of equations and product terms to share 
    for equation splitting, default to 2 when -split is specified
-cluster <num>
    num: number of cluster size in the target device for reference
-speed [yes|No]
    split equation with speed priority
-reduce none
-invert [Yes|no]
    allow inversion on outputs for Demorgan
-ifb [Yes|no]
    use internal feedback for combinatorial pin feedback
-xor [on|off]
    on : turn on EXOR synthesis
    off: turn off EXOR synthesis
-nxt (No Xor synthesis on T-FF)
@option_file
)";

}  // namespace

void printBanner(std::ostream& stream, bool isFull) {
  stream << title;
  if (isFull) stream << release;
  stream << buildDate << '\n' << (isFull ? notice : whereToLook) << '\n';
}

void printHelp(std::ostream& stream, std::string_view programName) {
  stream << programName << " -input filename.tt2 [options] \n" << helpText << std::flush;
}

}  // namespace ostrel
