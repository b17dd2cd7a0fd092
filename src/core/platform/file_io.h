#pragma once
// Whole-file reading and writing. A file is never rewritten in place: the new content goes
// to a temporary file in the same folder, is flushed to disk and renamed over the old one,
// so that a failure at any moment leaves either the old or the new file, never a torn one.
// The temporary file is synced before the rename and the folder after it, so that a power
// cut too leaves the old or the new file. Its name is the target's name followed by
// ".ostrel-tmp.<process id>.<number>"; one left by a process that is gone (killed midway)
// is removed by the next write of the same target and by the sweep at start-up.
//
// Only regular files are read: a folder, a device (/dev/zero) or a pipe is refused at once,
// as is a file read whole that is larger than kMaxWholeFileSize.
#include <cstdint>
#include <filesystem>
#include <functional>
#include <string>
#include <string_view>

namespace ostrel {

struct FileError {
    int code = 0;         // errno, or -1 when the failure has no system code
    std::string message;  // the system's text
};

// The largest file read whole: far more than any catalogue or list holds, small enough to be
// held in memory beside what is made of it.
constexpr std::uintmax_t kMaxWholeFileSize = std::uintmax_t{256} << 20;

// True when `path` names a regular file (symbolic links followed); otherwise false, with a
// message saying what the path names instead.
bool CheckRegularFile(const std::filesystem::path& path, FileError& error);

bool ReadWholeFile(const std::filesystem::path& path, std::string& content, FileError& error);
// Reads the file in pieces of `piece` bytes (the last may be shorter), handing each to
// `take` in order, so that a large file is never held whole beside what is made of it.
// False, with the error, when the file cannot be opened or read; pieces handed on before a
// failure stay handed on.
bool ReadFileInPieces(const std::filesystem::path& path, size_t piece,
                      const std::function<void(std::string_view)>& take, FileError& error);
bool WriteFileAtomic(const std::filesystem::path& path, std::string_view content, FileError& error);

// A regular file read at chosen places, for the few fields wanted of a large file of
// fixed-size records.
class PositionedFile {
  public:
    PositionedFile() = default;
    ~PositionedFile();
    PositionedFile(const PositionedFile&) = delete;
    PositionedFile& operator=(const PositionedFile&) = delete;

    bool Open(const std::filesystem::path& path, FileError& error);
    std::uintmax_t Size() const { return size_; }
    // Reads `count` bytes from `offset` on, fewer where the file ends first; the number
    // read, or -1 (with the error) when the read failed.
    std::int64_t ReadAt(std::uintmax_t offset, void* bytes, size_t count, FileError& error);
    // Maps the file, so that many small reads cost no system call each; false where it
    // cannot be mapped, and reads go on through the file. Files are replaced by a rename,
    // never cut short in place, so a mapping stays whole while it is read.
    bool MapForReading();

  private:
    int fd_ = -1;
    void* map_ = nullptr;
    std::uintmax_t size_ = 0;
    std::filesystem::path path_;
};
// The same, the content made piece by piece: `next` sets the next piece (which must stay
// valid until it is called again) and returns false when there is none left.
using PieceSource = std::function<bool(std::string_view& piece)>;
bool WriteFileAtomicFrom(const std::filesystem::path& path, const PieceSource& next,
                         FileError& error);
bool CopyFileAtomic(const std::filesystem::path& from, const std::filesystem::path& to,
                    FileError& error);
// Makes `to` hold what `from` holds now, without copying where the file system allows:
// a hard link under a temporary name renamed over `to`. Later atomic rewrites of `from`
// replace its name only, so `to` keeps the old content. Falls back to a copy.
bool SnapshotFile(const std::filesystem::path& from, const std::filesystem::path& to,
                  FileError& error);
// A whole-file write in two steps, for writes that must wait for something else (a
// database commit) before they take effect: Prepare writes and syncs the temporary file,
// Commit renames it over the target and syncs the folder, Discard removes it. A prepared
// file neither committed nor discarded is discarded when the object goes.
class PreparedFile {
  public:
    PreparedFile() = default;
    ~PreparedFile() { Discard(); }
    PreparedFile(PreparedFile&& other) noexcept;
    PreparedFile& operator=(PreparedFile&& other) noexcept;
    PreparedFile(const PreparedFile&) = delete;
    PreparedFile& operator=(const PreparedFile&) = delete;

    // Writes the content beside `path`; false (nothing left behind) when it cannot.
    bool Prepare(const std::filesystem::path& path, std::string_view content, FileError& error);
    // With `backup` given, the target's present content is first kept under that name (as
    // SnapshotFile does; a backup that cannot be made does not stop the commit).
    bool Commit(FileError& error, const std::filesystem::path& backup = {});
    void Discard();
    bool Pending() const { return !temp_.empty(); }
    const std::filesystem::path& Target() const { return target_; }

  private:
    std::filesystem::path target_;
    std::string temp_;
};

// Removes a file; a file that is not there is no error.
bool RemoveFileIfPresent(const std::filesystem::path& path, FileError& error);

// True when `name` has the form of a temporary name made by a whole-file write; `pid` is
// then the process that made it.
bool IsTemporaryName(const std::string& name, long& pid);
// Removes from `folder` the temporary files of processes that are gone, leaving those of
// running processes (another window or command writing now). With `target` given, only the
// temporaries of that file name. Returns how many were removed.
int RemoveStaleTemporaries(const std::filesystem::path& folder, const std::string& target = {});

// Test hook for the interruption tests: with OSTREL_KILL_AT_STEP=k in the environment (read
// once, at the first step), the process kills itself with SIGKILL on reaching its k-th step
// that changes a file or the database, before that step runs. The steps: each write into
// a temporary file, each rename, link and removal of a file (here), each added or deleted
// row and each commit of the database. Without the variable a step costs one test.
void KillPoint();

// Test hook: when set, each write of WriteFileAtomic asks it first; returning false makes
// the write fail as a full disk would (ENOSPC).
using WriteFaultHook = std::function<bool(const std::filesystem::path& target)>;
void SetWriteFaultHook(WriteFaultHook hook);

}  // namespace ostrel
