#include "support/program.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream content;
  content << file.rdbuf();
  return content.str();
}

void writeFile(const std::string& path, const std::string& content) {
  std::ofstream(path, std::ios::binary) << content;
}

std::string makeFolder() {
  std::string name = (fs::temp_directory_path() / "ostrel_XXXXXX").string();
  return mkdtemp(name.data());
}

ProgramResult runIn(const std::string& folder, const std::string& path,
                    const std::vector<std::string>& words) {
  std::vector<char*> arguments;
  for (const std::string& word : words) arguments.push_back(const_cast<char*>(word.c_str()));
  arguments.push_back(nullptr);
  const std::string out = folder + "/.stdout";
  const std::string err = folder + "/.stderr";
  const pid_t child = fork();
  if (child == 0) {
    const auto redirect = [](const std::string& name, int stream) {
      dup2(open(name.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0644), stream);
    };
    redirect(out, STDOUT_FILENO);
    redirect(err, STDERR_FILENO);
    if (chdir(folder.c_str()) == 0) execv(path.c_str(), arguments.data());
    _exit(127);
  }
  int status = 0;
  waitpid(child, &status, 0);
  ProgramResult result{WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status),
                       readFile(out), readFile(err)};
  fs::remove(out);
  fs::remove(err);
  return result;
}
