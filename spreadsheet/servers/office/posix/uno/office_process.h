#pragma once

#include <sys/types.h>

#include <chrono>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

namespace lorv::office {

// A process of the office that serves this one alone: a folder and a pipe of its own, no window, no input.
//
// It ends with the object, by force where it has not ended by itself, and with the thread that started it.
// Kill is for any thread, all else for one.
class OfficeProcess {
 public:
  // The folder for the profile is made; std::system_error where that fails.
  explicit OfficeProcess(std::string program);
  OfficeProcess(const OfficeProcess&) = delete;
  OfficeProcess& operator=(const OfficeProcess&) = delete;
  ~OfficeProcess();

  // Starts it, again where it has ended; std::system_error where that fails.
  void Start();
  // The exit status, a signal's number above 128; nothing while it runs.
  std::optional<int> Ended();
  bool WaitForEnd(std::chrono::milliseconds limit);
  void Kill();
  // Once it answers: what it would leave behind if it were killed is known from then on.
  void NoteSockets();
  const std::string& PipeName() const { return pipe_; }
  pid_t Id() const { return id_; }

 private:
  std::string program_;
  std::string folder_;
  std::string pipe_;
  std::vector<std::string> sockets_;
  std::mutex lock_;
  pid_t id_ = -1;
  std::optional<int> status_;
};

}  // namespace lorv::office
