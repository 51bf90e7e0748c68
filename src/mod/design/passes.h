// The passes over a Design, by the files of this folder, roughly in the order in which the pipeline
// runs them. Each looks at the options that concern it; without them it leaves the design alone.
#pragma once

#include <string>
#include <unordered_set>
#include <vector>

#include "design/design.h"
#include "fil/pla_file.h"
#include "fil/status.h"

namespace ostrel {

// ---- build.cpp ----

/// Fills an empty design from its file. Not Ok, with a message, at the first fault.
Status build(Design& design);

/// Looks whether every control function has a function to control; each Signal for which that
/// isn't so earns a message. Fatal if there was one.
Status checkLogic(Design& design);

// ---- lossless.cpp: nothing without --lossless ----

/// Names of Signals.
using Names = std::unordered_set<std::string>;

/// Brings every function into a form that no later step gives up. The named Signals keep their
/// sense.
void completeFunctions(Design& design, const Names& fixed);

/// True if the design has Signals whose set and reset can't follow an inversion.
bool hasFixedInits(const Design& design);

/// Lets set and reset follow the polarity, and the columns say the register types. Failed, with
/// messages, where that can't be done.
Status settleFunctions(Design& design);

// ---- minimize.cpp: nothing without --minimize ----

/// Brings every function into few terms, in both sets where either may be kept.
void minimizeFunctions(Design& design);

/// Likewise what splitting has made or changed, where that gives fewer terms.
void minimizeNewLogic(Design& design);

// ---- fanout.cpp: who reads whom ----

/// How many Signals read each input column.
using Readers = std::vector<int>;

/// Counts them by the supports of the Equations.
Readers countReaders(Design& design);

/// How often a Signal is read: once for each reader and column.
int fanoutOf(const Signal& signal, const Readers& readers);

/// The columns that the sets read, apart from sets that may be anything and from those of the
/// Signals in `passive` that are not read themselves.
ColumnSet columnsThatMatter(const Design& design, std::unordered_set<const Signal*> passive);

/// True if a column of the Signal is there.
bool readsAny(const ColumnSet& columns, const Signal& signal);

/// Works out the supports of the logic, control functions apart, where there is none.
void computeSupports(Design& design);

// ---- unused.cpp ----

/// Drops, with a warning, what is declared but stands in no column of the file.
void removeUnusedSignals(Design& design);

/// Drops, with a warning, the combinatorial nodes that nothing reads. With --lossless a literal in
/// a set counts too, if its Signal stays.
void removeDeadNodes(Design& design, const Readers& readers);

// ---- xor.cpp ----

/// Lays out the XOR pairs that the file gave.
void orderXorPairs(Design& design);

enum class XorTurn : unsigned char {
  First,     ///< offers all Signals to XOR synthesis
  NewLogic,  ///< those whose logic has changed since they were offered
};
void synthesizeXor(Design& design, XorTurn turn);

/// Moves the one-term operand of each XOR pair, which stood on the left, to the right.
void swapXorPairs(Design& design);

// ---- polarity.cpp ----

/// Makes every Equation keep one set. From here on the design is of type f.
void choosePolarity(Design& design);

/// Brings inverted constants into plain form.
void normalizePolarity(Design& design);

// ---- collapse.cpp ----

/// Gives a Signal that only repeats an XOR node the logic of that node. True if one changed.
bool collapseFeedback(Design& design, const Readers& readers);

// ---- control_nodes.cpp, split.cpp ----

/// Gives each left XOR operand and control Equation with too many terms a node of its own.
void splitControlEquations(Design& design);

/// With --factor gives nodes to what functions have in common, where that and the cutting of what
/// is too wide cost less than splitting (factor.cpp).
void factorLogic(Design& design);

/// Brings the logic Equations down to the terms that the options allow.
void splitEquations(Design& design);

// ---- feedback.cpp ----

/// Settles with which extension a driven pin is read back.
void assignFeedbackExtensions(Design& design);

/// Moves inversions of nodes and internal feedbacks into their readers, where the flip-flop stands
/// before the inverter.
void absorbInversions(Design& design);

// ---- export.cpp ----

/// The design as a file. One without inputs or outputs earns the console's line, and the file can
/// be written all the same.
PlaFile toFile(const Design& design);

}  // namespace ostrel
