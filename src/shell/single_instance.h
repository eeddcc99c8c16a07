// One running program for each person. The first start holds a lock and listens on a local socket;
// every later one hands its file over and ends. The socket lies in a folder that only this person
// can enter, below the session's runtime folder or, where there is none, the program's folder, and
// both sides check who is at the other end.
//
// A hand-over is one connection: the key that wakes the receiver, the file's path, a question mark
// as its end, and one letter back when all has arrived.
#pragma once

#include <chrono>
#include <memory>
#include <string>
#include <vector>

#include "base/outcome.h"

namespace ormel {

class SingleInstance {
 public:
  // Becomes the one instance, or hands `file` (empty: nothing) to the one that runs: the value is
  // null then. Waits no longer than `patience` for an instance that does not answer. A start that
  // finds the socket of a dead process takes its place; of several starts at the same moment one
  // wins. Fails when nobody answers, or when the folder cannot be used.
  [[nodiscard]] static Outcome<std::unique_ptr<SingleInstance>> ClaimOrHandOver(
      const std::string& programFolder, const std::string& file,
      std::chrono::milliseconds patience = std::chrono::seconds(5));

  ~SingleInstance();
  SingleInstance(const SingleInstance&) = delete;
  SingleInstance& operator=(const SingleInstance&) = delete;

  // Can be read from as soon as Receive() has something to do.
  int Descriptor() const { return events_; }

  // What has arrived whole since the last call, each a path and its end. Never waits: a start that
  // sends slowly or not at all keeps nobody else from it.
  std::vector<std::string> Receive();

 private:
  struct Client {
    int descriptor = -1;
    std::string text;
  };

  SingleInstance(int lock, int listener, int events);
  void Accept();
  // False: the connection is over.
  bool ReadFrom(Client& client, std::vector<std::string>& arrived);

  const int lock_;
  const int listener_;
  const int events_;
  std::vector<Client> clients_;
};

}  // namespace ormel
