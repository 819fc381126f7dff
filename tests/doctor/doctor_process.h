#pragma once

#include <sys/types.h>

#include <functional>
#include <string>
#include <vector>

namespace halvane {

/// How the doctor is called.
struct Call {
  std::string home;  ///< HOME
  /// More of the environment, each "NAME=value". PATH, an American locale and UTC are there unless named.
  std::vector<std::string> variables = {};
  std::vector<std::string> arguments = {};
  /// Done in the new process with its streams in place, just before it becomes the doctor.
  std::function<void()> before = {};
};

/// How the doctor ended.
struct Answer {
  int status;          ///< the exit status; minus the signal's number when a signal ended it
  std::string output;  ///< all that it wrote to standard output
  std::string errors;  ///< all that it wrote to standard error

  bool says(const std::string& text) const { return output.find(text) != std::string::npos; }
};

/// Runs the real doctor as a child process, with files for its streams.
Answer callDoctor(const Call& call);

/// What a person does at a terminal while the doctor runs: `keyboard` takes what is typed.
using AtTerminal = std::function<void(pid_t doctor, int keyboard)>;

/// The same at a terminal, where output and errors come as one.
Answer callDoctorAtTerminal(
    const Call& call, const AtTerminal& meanwhile = [](pid_t, int) {});

}  // namespace halvane
