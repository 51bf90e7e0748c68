// What a comparison found out.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "verify/model/network.h"

namespace ostrel::verify {

enum class Outcome { Proven, Different, Undecided };

/// What differs.
enum class Kind { Value, Missing, Type, Mark, Width, Form };

struct Finding {
  Outcome outcome = Outcome::Proven;
  std::string subject;  ///< Signal and function, or what else is at fault
  std::string detail;   ///< the assignment or the reason; empty for what was proven
  Kind kind = Kind::Form;
  std::optional<std::size_t> signal;  ///< of INPUT, if a Signal differs that both files declare
  Slot slot = Slot::Logic;
  std::string_view loss;  ///< the id of the told step that probably lost it; see losses.h
  std::string_view lossSentence;
};

inline Finding formDifference(std::string subject, std::string detail) {
  Finding finding;
  finding.outcome = Outcome::Different;
  finding.subject = std::move(subject);
  finding.detail = std::move(detail);
  return finding;
}

}  // namespace ostrel::verify
