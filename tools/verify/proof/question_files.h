// The questions put to the solver as files, so that another solver or a proof checker can answer
// them again.
#pragma once

#include <cstddef>
#include <filesystem>
#include <functional>
#include <string>

#include "verify/proof/cnf.h"

namespace ostrel::verify {

/// Writes `NNNN.cnf` for each question, in DIMACS with the names of columns in comments, and the
/// solver's DRAT proof `NNNN.drat` beside it where there is no assignment.
class QuestionFiles {
 public:
  /// `folder` is empty if nothing is to be written; otherwise it is made.
  explicit QuestionFiles(std::filesystem::path folder);

  /// Writes the question and has the solver, which must be fresh, trace its proof.
  void open(const Cnf& cnf, const std::string& title,
            const std::function<std::string(std::size_t node)>& nameOf, CaDiCaL::Solver& solver);

  /// Ends the question that open began. Without a proof its file goes.
  void close(bool isProven, CaDiCaL::Solver& solver);

  /// Whether all files could be written.
  bool isComplete() const { return complete_; }

 private:
  std::filesystem::path proofName() const;

  std::filesystem::path folder_;
  std::size_t count_ = 0;
  bool complete_ = true;
};

}  // namespace ostrel::verify
