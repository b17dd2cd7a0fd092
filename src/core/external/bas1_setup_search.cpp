#include "core/external/bas1_setup_search.h"

namespace ostrel {

Bas1SetupSearch::~Bas1SetupSearch() {
    Stop();
    Wait();
}

void Bas1SetupSearch::Start(const SearchRoots& roots, std::array<bool, 3> wanted,
                            std::array<std::string, 3> notes) {
    if (started_) return;
    Wait();
    stop_ = false;
    finished_ = false;
    folders_ = 0;
    outcome_ = Outcome{};
    SetNote("");
    started_ = true;
    worker_ = std::thread(&Bas1SetupSearch::Run, this, roots, wanted, std::move(notes));
}

void Bas1SetupSearch::Run(SearchRoots roots, std::array<bool, 3> wanted,
                          std::array<std::string, 3> notes) {
    WalkControl control;
    control.note = [this](const std::string& text) { SetNote(text); };
    control.stop = &stop_;
    control.folders = &folders_;
    for (std::size_t i = 0; i < wanted.size(); ++i) {
        if (!wanted[i]) continue;
        if (stop_) break;
        SetNote(notes[i]);
        std::string folder = Bas1Setup::Locate(roots, Bas1Setup::kProgramFiles[i], control);
        if (stop_) break;  // a walk cut short proves nothing
        outcome_.folders[i] = std::move(folder);
        outcome_.searched[i] = true;
    }
    outcome_.stopped = stop_;
    finished_ = true;
}

void Bas1SetupSearch::SetNote(const std::string& text) {
    std::lock_guard<std::mutex> lock(mutex_);
    note_ = text;
}

std::string Bas1SetupSearch::Note() const {
    std::lock_guard<std::mutex> lock(mutex_);
    return note_;
}

void Bas1SetupSearch::Wait() {
    if (worker_.joinable()) worker_.join();
}

Bas1SetupSearch::Outcome Bas1SetupSearch::Take() {
    Wait();
    started_ = false;
    return outcome_;
}

}  // namespace ostrel
