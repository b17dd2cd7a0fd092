#pragma once
// The installation search on a worker thread, so that the windows keep answering while the
// disks are walked. The walk touches no state of the program: it only finds folders. The
// caller starts it, reads its progress at its own pace (a timer on the window's thread),
// may stop it, and takes the folders found once it has ended.
#include <array>
#include <atomic>
#include <mutex>
#include <string>
#include <thread>

#include "core/external/bas1_setup.h"

namespace ostrel {

class Bas1SetupSearch {
  public:
    struct Outcome {
        // The folder found for each program of Bas1Setup::kProgramFiles, "" when none.
        std::array<std::string, 3> folders;
        // True for each program whose search ran to its end (a stop cuts the rest).
        std::array<bool, 3> searched{};
        bool stopped = false;
    };

    Bas1SetupSearch() = default;
    ~Bas1SetupSearch();
    Bas1SetupSearch(const Bas1SetupSearch&) = delete;
    Bas1SetupSearch& operator=(const Bas1SetupSearch&) = delete;

    // Starts a search for the programs marked in `wanted`, each announced on the progress
    // line by its note. Does nothing while a search is running.
    void Start(const SearchRoots& roots, std::array<bool, 3> wanted,
               std::array<std::string, 3> notes);
    // Asks the walk to stop at the next folder.
    void Stop() { stop_ = true; }
    // A search was started and its outcome not yet taken.
    bool Running() const { return started_; }
    // The worker has ended (its outcome is ready to take).
    bool Finished() const { return finished_; }
    // Waits for the worker to end.
    void Wait();
    // The latest progress text and the count of folders looked at.
    std::string Note() const;
    int Folders() const { return folders_; }
    // Waits for the worker and hands over what it found.
    Outcome Take();

  private:
    void Run(SearchRoots roots, std::array<bool, 3> wanted, std::array<std::string, 3> notes);
    void SetNote(const std::string& text);

    std::thread worker_;
    std::atomic<bool> stop_{false};
    std::atomic<bool> finished_{false};
    std::atomic<int> folders_{0};
    bool started_ = false;
    mutable std::mutex mutex_;
    std::string note_;
    Outcome outcome_;
};

}  // namespace ostrel
