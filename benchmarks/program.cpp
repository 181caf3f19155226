#include "benchmarks/program.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>

#include "benchmarks/measure.h"

Program::Program(const std::vector<std::string>& worker) {
  int input[2], output[2];
  if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) std::exit(1);
  process_ = fork();
  if (process_ == 0) {
    dup2(input[0], STDIN_FILENO);
    dup2(output[1], STDOUT_FILENO);
    Become(worker);
  }
  close(input[0]);
  close(output[1]);
  jobs_ = fdopen(input[1], "w");
  answers_ = fdopen(output[0], "r");
}

Program::~Program() {
  std::fclose(jobs_);
  std::fclose(answers_);
  waitpid(process_, nullptr, 0);
}

Measured Program::Do(const std::string& job) {
  Measured measured;
  std::fprintf(jobs_, "%s\n", job.c_str());
  std::fflush(jobs_);
  if (std::fscanf(answers_, "%lf %lf", &measured.seconds, &measured.silence) == 2) return measured;
  std::fprintf(stderr, "failed: %s\n", job.c_str());
  std::exit(1);
}
