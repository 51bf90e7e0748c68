// Can this literal of the graph ever be true, and when?
//
// First come vectors, 64 to the word: half of them random, half taken from rows of the two files,
// since a random vector seldom meets a row with many literals. What they don't find goes to a SAT
// solver, one for each question, which sees only the cone of the literal. The solver's work is
// limited by its number of conflicts, those of all questions together, so that a question can stay
// open but a run never hangs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "verify/proof/graph.h"
#include "verify/proof/question_files.h"

namespace ostrel::verify {

/// The values of all nodes under a fixed number of input vectors.
class Simulation {
 public:
  static constexpr std::size_t words = 16;
  static constexpr std::size_t vectors = 64 * words;

  explicit Simulation(const Graph& graph) : graph_(graph) {}

  /// Evaluates the nodes that are new since the last call; new variables get random values.
  void update();

  /// Gives a variable that update has seen another value. Only as long as nothing reads it.
  void set(Literal variable, std::size_t vector, bool value);

  /// The first vector that makes the literal true. Needs update.
  std::optional<std::size_t> firstVector(Literal goal) const;

  bool value(Literal literal, std::size_t vector) const;

  /// The next number of a fixed random sequence.
  std::uint64_t random();

 private:
  void evaluate(std::size_t node);

  const Graph& graph_;
  std::vector<std::uint64_t> values_;  // words for each node
  std::uint64_t state_ = 0x243f6a8885a308d3;
};

enum class Proof { Never, Found, GaveUp };

/// What all questions of a run share.
struct SolverWork {
  std::int64_t effort;  ///< how many conflicts are left for them
  QuestionFiles files;
};

class Prover {
 public:
  Prover(const Graph& graph, Simulation& simulation, SolverWork& work)
      : graph_(graph), simulation_(simulation), work_(work) {}

  /// Names for the files of questions: what is asked, and variables by their node.
  void setTitle(std::string title) { title_ = std::move(title); }
  void setNames(std::function<std::string(std::size_t)> nameOf) { nameOf_ = std::move(nameOf); }

  /// Found: `assignment` holds literals of variables; whenever they are true the goal is, and the
  /// value of `settled` is fixed.
  Proof find(Literal goal, std::vector<Literal>& assignment, Literal settled = trueLiteral);

  /// Is there an assignment of the other variables under which the goal is true whatever the
  /// `choices` are? Found: `assignment` is such a one, without the choices; it fixes `settled`
  /// unless that depends on them.
  Proof findForAll(Graph& graph, Literal goal, const std::vector<Literal>& choices,
                   std::vector<Literal>& assignment, Literal settled = trueLiteral);

  /// Whether the goal can never be true.
  bool isNever(Literal goal) {
    std::vector<Literal> assignment;
    return find(goal, assignment) == Proof::Never;
  }

  /// The value of a literal under values for some variables; none if they don't settle it.
  std::optional<bool> evaluate(Literal literal, const std::vector<Literal>& assignment);

 private:
  Proof solve(Literal goal, const std::vector<std::size_t>& nodes,
              std::vector<Literal>& assignment);
  void narrow(Literal goal, Literal settled, const std::vector<std::size_t>& nodes,
              std::vector<Literal>& assignment);
  signed char ternary(Literal literal) const;
  void propagate(const std::vector<std::size_t>& nodes, const std::vector<Literal>& assignment);

  const Graph& graph_;
  Simulation& simulation_;
  SolverWork& work_;
  std::string title_;
  std::function<std::string(std::size_t)> nameOf_ = [](std::size_t) { return std::string(); };
  std::vector<signed char> ternary_;  // by node: 0, 1, or open; scratch
};

}  // namespace ostrel::verify
