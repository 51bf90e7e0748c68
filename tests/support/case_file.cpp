#include "support/case_file.h"

#include <fstream>

CaseFile CaseFile::load(const std::string& path) {
  CaseFile result;
  std::ifstream file(path);
  std::string* current = &result.preface;
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with("== ")) {
      result.sections.emplace_back(line.substr(3), "");
      current = &result.sections.back().second;
    } else {
      *current += line + "\n";
    }
  }
  return result;
}

void CaseFile::save(const std::string& path) const {
  std::ofstream file(path);
  file << preface;
  for (const auto& [name, content] : sections) file << "== " << name << "\n" << content;
}

std::string CaseFile::text(const std::string& name, const std::string& fallback) const {
  for (const auto& [section, content] : sections) {
    if (section == name) return content;
  }
  return fallback;
}
