#include "benchmarks/worker.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>

namespace {

std::string FileAbout(pid_t process, const char* name) {
  return "/proc/" + std::to_string(process) + "/" + name;
}

/// Starts measuring the peak of a process's memory anew.
void ForgetPeakMemory(pid_t process) {
  std::ofstream(FileAbout(process, "clear_refs")) << 5;
}

/// Bytes.
double PeakMemory(pid_t process) {
  std::ifstream status(FileAbout(process, "status"));
  for (std::string word; status >> word;)
    if (double kilobytes = 0; word == "VmHWM:" && status >> kilobytes) return kilobytes * 1024;
  return 0;
}

}  // namespace

Worker::Worker(const std::vector<std::string>& command) {
  int input[2], output[2];
  if (pipe2(input, O_CLOEXEC) != 0 || pipe2(output, O_CLOEXEC) != 0) std::exit(1);
  process_ = fork();
  if (process_ == 0) {
    dup2(input[0], STDIN_FILENO);
    dup2(output[1], STDOUT_FILENO);
    Become(command);
  }
  close(input[0]);
  close(output[1]);
  jobs_ = fdopen(input[1], "w");
  answers_ = fdopen(output[0], "r");
}

Worker::~Worker() {
  std::fclose(jobs_);
  std::fclose(answers_);
  waitpid(process_, nullptr, 0);
}

Measured Worker::Do(const std::string& job) {
  Measured measured;
  ForgetPeakMemory(process_);
  std::fprintf(jobs_, "%s\n", job.c_str());
  std::fflush(jobs_);
  if (std::fscanf(answers_, "%lf %lf", &measured.seconds, &measured.heap) != 2) {
    std::fprintf(stderr, "the worker failed at: %s\n", job.c_str());
    std::exit(1);
  }
  measured.peakMemory = PeakMemory(process_);
  return measured;
}
