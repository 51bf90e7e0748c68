// Where the optimizer itself gives up or changes a function.
//
// Some of its steps, kept as they are for the sake of the same output, lose a function or turn it
// round under certain options or inputs. Such a result is not a proof and not a fault: it is not
// comparable, and the user is told why. An excuse is only looked for where the comparison failed;
// it names the one step that can have done this to this function, or nothing.
#pragma once

#include <optional>
#include <string>

#include "verify/options.h"
#include "verify/pairing.h"
#include "verify/prover.h"

namespace ostrel::verify {

class Excuses {
 public:
  Excuses(const Pairing& pairing, const RunOptions& options)
      : pairing_(pairing), options_(options) {}

  /// Why OUTPUT may lack the data (Slot::Logic) or a control function of a Signal of INPUT in the
  /// slot where it should be.
  std::optional<std::string> forMissing(std::size_t signal, Slot slot, Slot outSlot) const;

  /// Likewise for data that is never 1.
  std::optional<std::string> forMissingZero(std::size_t signal) const;

  /// Why the data or control function may have come out as its complement.
  std::optional<std::string> forComplement(std::size_t signal, Slot slot, Slot outSlot) const;

  /// Why literals of nodes that OUTPUT lacks may be gone from the function: only its rows of 0
  /// read them, and these do not count as readers.
  std::optional<std::string> forUnreadNode(std::size_t signal, Slot slot) const;

  /// Why a function may read the pin of a Signal in the place of its own value or the other way
  /// round. The Signal is a pin that can be off.
  std::optional<std::string> forPinRead(std::size_t signal, Slot slot, std::size_t pin) const;

  /// Why Set and Reset may stand the other way round than the polarity asks for.
  std::optional<std::string> forSetReset(std::size_t signal, bool exchangeExpected) const;

  /// The run holds on to the ON set of the Signal's data, however small the OFF set is.
  bool keepsOnSet(std::size_t signal) const;

 private:
  bool isDroppedByOnSet(const Function& f) const;
  std::optional<std::string> forMissingData(const Signal& signal, bool onSet) const;
  const Signal* repeatedNode(const Signal& signal) const;
  std::optional<std::string> forLostSource(const Signal& signal) const;
  std::optional<std::string> forCollapse(std::size_t signal) const;
  std::optional<std::string> forLiteralSense(const Function& in, const Function& out,
                                             bool isHalf) const;
  bool readsSignal(std::size_t signal, Slot slot, std::size_t target) const;
  bool couldReuse(std::size_t signal, Slot slot, const Signal& source) const;

  const Pairing& pairing_;
  RunOptions options_;
};

}  // namespace ostrel::verify
