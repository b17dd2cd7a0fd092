#pragma once
// Where the sibling programs are installed: the stored folders of KelmoraTD, Lumbrak3D and
// LumbrakSextaneTD, whether each still holds its program, and the disk walk that finds them.
//
// Folders are kept with a trailing separator. Program files match regardless of case. The
// walk is depth first over the folders sorted by name, does not follow symbolic links to
// folders, and passes over folders it cannot read.
#include <array>
#include <atomic>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "core/platform/dialogs.h"
#include "core/platform/settings_store.h"

namespace ostrel {

// The starts of a search: the folder above the program's, then the whole "drive" (the
// user's home), then the folders where programs are installed for all users (/opt and
// /usr/local). Any may be empty, and is then passed over.
struct SearchRoots {
    std::string parent;
    std::string drive;
    std::vector<std::string> shared = {};
};

// What a walk reports and obeys: the progress text (the folder notes), a stop request
// checked at every folder, and a count of the folders listed.
struct WalkControl {
    std::function<void(const std::string&)> note;
    const std::atomic<bool>* stop = nullptr;
    std::atomic<int>* folders = nullptr;
    bool Stopped() const { return stop && stop->load(); }
};

class Bas1Setup {
  public:
    static constexpr const char* kSection = "B1SetupPathsTD";
    static constexpr const char* kKeyFirstLoad = "FirstLoad1TD";
    static constexpr const char* kKeyKelmora = "KelmoraTD";
    static constexpr const char* kKeyLumbrak = "LumbrakPlusTD";
    static constexpr const char* kKeySextane = "LumbrakSextaneTD";
    static constexpr const char* kFileKelmora = "KelmoraTD.EXE";
    static constexpr const char* kFileLumbrak = "Lumbrak3D.EXE";
    static constexpr const char* kFileSextane = "LumbrakSextaneTD.EXE";
    // Stored true once the user has stopped the search of the first run: later starts
    // do not search again by themselves (the setup's Scan still does).
    static constexpr const char* kKeySearchStopped = "FirstSearchStopped1TD";
    static constexpr const char* kWalkNote =
        "First time search for Lumbrak3D, SextaneTD and KelmoraTD.  Looking in: ";
    // The program files in the order of the search: Kelmora, Lumbrak3D, Sextane.
    static constexpr std::array<const char*, 3> kProgramFiles{kFileKelmora, kFileLumbrak,
                                                              kFileSextane};

    Bas1Setup(SettingsStore& settings, Dialogs& dialogs) : settings_(settings), dialogs_(dialogs) {}

    // Reads FirstLoad1TD and, when the setup has been confirmed before, the three folders,
    // each checked for its program.
    void LoadPaths();
    // Stores each folder whose program was found.
    void SavePaths();
    // Stores FirstLoad1TD from the flag.
    void StoreFirstLoad();

    // True (folder kept, flag set) when the folder holds the program; otherwise only the
    // flag is cleared and the old folder stays.
    bool SetPathKelmora(const std::string& path);
    bool SetPathLumbrak(const std::string& path);
    bool SetPathSextane(const std::string& path);

    bool GetKelmoraFound() const { return kelmoraFound_; }
    bool GetLumbrakFound() const { return lumbrakFound_; }
    bool GetSextaneFound() const { return sextaneFound_; }
    const std::string& GetPathKelmora() const { return pathKelmora_; }
    const std::string& GetPathLumbrak() const { return pathLumbrak_; }
    const std::string& GetPathSextane() const { return pathSextane_; }
    bool GetFirstLoad() const { return firstLoad_; }
    void SetFirstLoad(bool v) { firstLoad_ = v; }
    // True when the user stopped the first run's search at an earlier start.
    bool GetSearchStopped() const;
    void StoreSearchStopped();
    // SetPathKelmora, SetPathLumbrak or SetPathSextane by the order of kProgramFiles.
    bool SetPathOf(int program, const std::string& path);
    bool GetFoundOf(int program) const;
    const std::string& GetPathOf(int program) const;

    // True when the folder holds the file (name in any case). Never fails loudly.
    static bool ProgramInFolder(const std::string& path, const std::string& file);
    // The folder with a trailing separator ("" stays "").
    static std::string WithSeparator(const std::string& path);
    // The folder above `programFolder`, with a trailing separator; "" for a root folder.
    static std::string ParentFolder(const std::string& programFolder);
    // The user's drive: $WINEPREFIX/drive_c, else ~/.wine/drive_c when it exists, else the
    // home folder.
    static std::string DefaultDrive();
    // The program's parent folder, the drive, then /opt and /usr/local where they exist.
    static SearchRoots DefaultRoots(const std::string& programFolder);

    // The walk of FindFile, reporting and stopping through `control`.
    static int64_t Walk(const std::string& start, const std::string& file, int& found, int& dirs,
                        std::vector<std::string>& foundList, bool stopAtFirst, int depth,
                        const WalkControl& control);
    // The first folder holding `file`: the parent start first, then the drive, then the
    // shared folders, each walk stopping at its first match; "" if none.
    static std::string Locate(const SearchRoots& roots, const std::string& file,
                              const WalkControl& control);

    // The disk walk from `start` for `file`. Adds the matches to `found` and their folders
    // to `foundList`, the folders seen to `dirs`; with stopAtFirst the walk ends at the first
    // match. Returns the sum of the sizes of the matches. Folders of depth 0 to 2 are
    // reported on the help line.
    int64_t FindFile(const std::string& start, const std::string& file, int& found, int& dirs,
                     std::vector<std::string>& foundList, bool stopAtFirst, int depth);

    // First-run search of all three programs; accepted folders are kept (not stored).
    void SearchAll(const SearchRoots& roots);
    // Search of the programs not found; the first folder found (or "") goes to the
    // matching argument, the others are left as they are.
    void SearchMissing(const SearchRoots& roots, std::string& pathKelmora, std::string& pathLumbrak,
                       std::string& pathSextane);

  private:
    WalkControl NoteControl();
    bool SetPath(const std::string& path, const char* file, std::string& keep, bool& flag);

    SettingsStore& settings_;
    Dialogs& dialogs_;
    bool firstLoad_ = true;
    bool kelmoraFound_ = false, lumbrakFound_ = false, sextaneFound_ = false;
    std::string pathKelmora_, pathLumbrak_, pathSextane_;
};

}  // namespace ostrel
