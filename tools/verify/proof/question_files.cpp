#include "verify/proof/question_files.h"

#include <fstream>
#include <system_error>

namespace ostrel::verify {

QuestionFiles::QuestionFiles(std::filesystem::path folder) : folder_(std::move(folder)) {
  std::error_code failed;
  if (folder_.empty()) return;
  std::filesystem::create_directories(folder_, failed);
  complete_ = !failed;
}

std::filesystem::path QuestionFiles::proofName() const {
  std::string number = std::to_string(count_);
  number.insert(0, number.size() < 4 ? 4 - number.size() : 0, '0');
  return folder_ / (number + ".drat");
}

void QuestionFiles::open(const Cnf& cnf, const std::string& title,
                         const std::function<std::string(std::size_t node)>& nameOf,
                         CaDiCaL::Solver& solver) {
  if (folder_.empty()) return;
  ++count_;
  std::ofstream file(proofName().replace_extension(".cnf"));
  file << "c " << title << '\n';
  for (std::size_t v = 0; v < cnf.nodes().size(); ++v) {
    const std::string name = nameOf(cnf.nodes()[v]);
    if (!name.empty()) file << "c " << v + 1 << " = " << name << '\n';
  }
  file << "p cnf " << cnf.nodes().size() << ' ' << cnf.clauseCount() << '\n';
  for (const int literal : cnf.clauses()) file << literal << (literal == 0 ? '\n' : ' ');
  file.flush();
  solver.set("binary", 0);
  complete_ = solver.trace_proof(proofName().c_str()) && file.good() && complete_;
}

void QuestionFiles::close(bool isProven, CaDiCaL::Solver& solver) {
  if (folder_.empty()) return;
  solver.close_proof_trace();
  std::error_code ignored;
  if (!isProven) std::filesystem::remove(proofName(), ignored);
}

}  // namespace ostrel::verify
