#include "core/platform/file_io.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cctype>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <random>

namespace ostrel {
namespace fs = std::filesystem;
namespace {

constexpr std::string_view kTempMark = ".ostrel-tmp.";

WriteFaultHook& FaultHook() {
    static WriteFaultHook hook;
    return hook;
}

void SetError(FileError& error, int code, const fs::path& path) {
    error.code = code;
    error.message = std::string(std::strerror(code)) + ": " + path.string();
}

void SetError(FileError& error, int code, const std::string& reason, const fs::path& path) {
    error.code = code;
    error.message = reason + ": " + path.string();
}

// Refuses what stat tells is no regular file, with the reason.
bool RegularOrRefused(const struct stat& st, const fs::path& path, FileError& error) {
    if (S_ISREG(st.st_mode)) return true;
    if (S_ISDIR(st.st_mode)) {
        SetError(error, EISDIR, "This is a folder, not a file", path);
    } else {
        SetError(error, -1, "This is no regular file (a device, a pipe or a socket)", path);
    }
    return false;
}

// Opens a regular file for reading. Anything else is refused before it is opened, and
// O_NONBLOCK keeps the open from waiting on a pipe swapped in meanwhile (the flag has no
// effect on the reads of a regular file).
int OpenRegularFile(const fs::path& path, struct stat& st, FileError& error) {
    if (!CheckRegularFile(path, error)) return -1;
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK);
    if (fd < 0) {
        SetError(error, errno, path);
        return -1;
    }
    if (::fstat(fd, &st) != 0) {
        SetError(error, errno, path);
        ::close(fd);
        return -1;
    }
    if (!RegularOrRefused(st, path, error)) {
        ::close(fd);
        return -1;
    }
    return fd;
}

void SetTooLarge(FileError& error, const fs::path& path) {
    SetError(error, EFBIG,
             "The file is larger than " + std::to_string(kMaxWholeFileSize >> 20) +
                 " MB, more than any catalogue or list holds",
             path);
}

fs::path FolderOf(const fs::path& path) {
    return path.has_parent_path() ? path.parent_path() : fs::path(".");
}

// Creates a new temporary file beside `path`, named after it and this process; returns its
// descriptor and name, or -1.
int CreateTemporaryBeside(const fs::path& path, std::string& temp) {
    static std::atomic<unsigned> counter{std::random_device{}() % 1000000};
    for (int attempt = 0; attempt < 100; ++attempt) {
        temp = path.string() + std::string(kTempMark) + std::to_string(::getpid()) + "." +
               std::to_string(counter++ % 1000000);
        int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
        if (fd >= 0 || errno != EEXIST) return fd;
    }
    return -1;
}

// Syncs the folder's entries, so that a rename in it survives a power cut. The new file is
// in place by then, so a folder that cannot be synced fails nothing.
void SyncFolder(const fs::path& folder) {
    int fd = ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd < 0) return;
    ::fsync(fd);
    ::close(fd);
}

bool ProcessAlive(long pid) {
    // EPERM: the process is there but belongs to someone else.
    return ::kill(static_cast<pid_t>(pid), 0) == 0 || errno == EPERM;
}

}  // namespace

void KillPoint() {
    static const long at = [] {
        const char* text = std::getenv("OSTREL_KILL_AT_STEP");
        return text ? std::strtol(text, nullptr, 10) : 0L;
    }();
    if (at <= 0) return;
    static std::atomic<long> reached{0};
    if (++reached == at) std::raise(SIGKILL);
}

void SetWriteFaultHook(WriteFaultHook hook) {
    FaultHook() = std::move(hook);
}

bool CheckRegularFile(const fs::path& path, FileError& error) {
    struct stat st {};
    if (::stat(path.c_str(), &st) != 0) {
        SetError(error, errno, path);
        return false;
    }
    return RegularOrRefused(st, path, error);
}

bool ReadWholeFile(const fs::path& path, std::string& content, FileError& error) {
    struct stat st {};
    int fd = OpenRegularFile(path, st, error);
    if (fd < 0) return false;
    content.clear();
    // Nothing is kept of a file that cannot be read whole.
    auto fail = [&](int code) {
        content.clear();
        if (code == EFBIG) {
            SetTooLarge(error, path);
        } else {
            SetError(error, code, path);
        }
        ::close(fd);
        return false;
    };
    if (static_cast<std::uintmax_t>(st.st_size) > kMaxWholeFileSize) return fail(EFBIG);
    // The size the file has now is read straight into the text; whatever the file has
    // grown by since is read after it, piece by piece, held to the same limit.
    size_t filled = 0;
    content.resize(static_cast<size_t>(st.st_size));
    char piece[1 << 16];
    for (;;) {
        const bool inText = filled < content.size();
        const ssize_t n = inText ? ::read(fd, content.data() + filled, content.size() - filled)
                                 : ::read(fd, piece, sizeof piece);
        if (n == 0) break;
        if (n < 0) {
            if (errno == EINTR) continue;
            return fail(errno);
        }
        if (!inText) content.append(piece, static_cast<size_t>(n));
        filled += static_cast<size_t>(n);
        if (filled > kMaxWholeFileSize) return fail(EFBIG);
    }
    content.resize(filled);
    ::close(fd);
    return true;
}

bool ReadFileInPieces(const std::filesystem::path& path, size_t piece,
                      const std::function<void(std::string_view)>& take, FileError& error) {
    struct stat st {};
    int fd = OpenRegularFile(path, st, error);
    if (fd < 0) return false;
    std::string buffer(std::max<size_t>(piece, 1), '\0');
    size_t filled = 0;
    for (;;) {
        ssize_t n = ::read(fd, buffer.data() + filled, buffer.size() - filled);
        if (n < 0) {
            if (errno == EINTR) continue;
            SetError(error, errno, path);
            ::close(fd);
            return false;
        }
        filled += static_cast<size_t>(n);
        // A piece goes on only when full, or at the end of the file.
        if (filled == buffer.size() || (n == 0 && filled > 0)) {
            take(std::string_view(buffer.data(), filled));
            filled = 0;
        }
        if (n == 0) break;
    }
    ::close(fd);
    return true;
}

PositionedFile::~PositionedFile() {
    if (map_) ::munmap(map_, size_);
    if (fd_ >= 0) ::close(fd_);
}

bool PositionedFile::Open(const std::filesystem::path& path, FileError& error) {
    if (map_) ::munmap(map_, size_);
    map_ = nullptr;
    if (fd_ >= 0) ::close(fd_);
    struct stat st {};
    fd_ = OpenRegularFile(path, st, error);
    if (fd_ < 0) return false;
    size_ = static_cast<std::uintmax_t>(st.st_size);
    path_ = path;
    return true;
}

std::int64_t PositionedFile::ReadAt(std::uintmax_t offset, void* bytes, size_t count,
                                    FileError& error) {
    if (map_) {
        if (offset >= size_) return 0;
        const size_t n = static_cast<size_t>(std::min<std::uintmax_t>(count, size_ - offset));
        std::memcpy(bytes, static_cast<const char*>(map_) + offset, n);
        return static_cast<std::int64_t>(n);
    }
    auto* out = static_cast<char*>(bytes);
    size_t done = 0;
    while (done < count) {
        const ssize_t n = ::pread(fd_, out + done, count - done, static_cast<off_t>(offset + done));
        if (n < 0) {
            if (errno == EINTR) continue;
            SetError(error, errno, path_);
            return -1;
        }
        if (n == 0) break;
        done += static_cast<size_t>(n);
    }
    return static_cast<std::int64_t>(done);
}

bool PositionedFile::MapForReading() {
    if (map_) return true;
    if (fd_ < 0 || size_ == 0 || size_ > SIZE_MAX) return false;
    void* m = ::mmap(nullptr, static_cast<size_t>(size_), PROT_READ, MAP_PRIVATE, fd_, 0);
    if (m == MAP_FAILED) return false;
    map_ = m;
    return true;
}

bool WriteFileAtomic(const std::filesystem::path& path, std::string_view content,
                     FileError& error) {
    bool given = false;
    return WriteFileAtomicFrom(
        path,
        [&](std::string_view& piece) {
            if (given) return false;
            given = true;
            piece = content;
            return true;
        },
        error);
}

namespace {

// Writes the pieces to a new temporary file beside `path` and syncs it; `temp` names it.
bool WriteTemporary(const std::filesystem::path& path, const PieceSource& next, std::string& temp,
                    FileError& error) {
    RemoveStaleTemporaries(FolderOf(path), path.filename().string());
    int fd = CreateTemporaryBeside(path, temp);
    if (fd < 0) {
        SetError(error, errno, path);
        return false;
    }
    auto fail = [&](int code) {
        ::close(fd);
        ::unlink(temp.c_str());
        SetError(error, code, path);
        return false;
    };
    size_t total = 0;
    std::string_view piece;
    while (next(piece)) {
        size_t done = 0;
        while (done < piece.size()) {
            KillPoint();
            if (FaultHook() && !FaultHook()(path)) return fail(ENOSPC);
            size_t chunk = std::min<size_t>(piece.size() - done, 1 << 20);
            ssize_t n = ::write(fd, piece.data() + done, chunk);
            if (n < 0) {
                if (errno == EINTR) continue;
                return fail(errno);
            }
            done += static_cast<size_t>(n);
        }
        total += piece.size();
    }
    if (total == 0 && FaultHook() && !FaultHook()(path)) return fail(ENOSPC);
    if (::fsync(fd) != 0) return fail(errno);
    if (::close(fd) != 0) {
        int code = errno;
        ::unlink(temp.c_str());
        SetError(error, code, path);
        return false;
    }
    return true;
}

// Renames the temporary over `path` and syncs the folder; the temporary goes either way.
bool RenameTemporary(const std::string& temp, const std::filesystem::path& path, FileError& error) {
    KillPoint();
    if (::rename(temp.c_str(), path.c_str()) != 0) {
        int code = errno;
        ::unlink(temp.c_str());
        SetError(error, code, path);
        return false;
    }
    SyncFolder(FolderOf(path));
    return true;
}

}  // namespace

bool WriteFileAtomicFrom(const std::filesystem::path& path, const PieceSource& next,
                         FileError& error) {
    std::string temp;
    return WriteTemporary(path, next, temp, error) && RenameTemporary(temp, path, error);
}

PreparedFile::PreparedFile(PreparedFile&& other) noexcept
    : target_(std::move(other.target_)), temp_(std::move(other.temp_)) {
    other.temp_.clear();
}

PreparedFile& PreparedFile::operator=(PreparedFile&& other) noexcept {
    if (this != &other) {
        Discard();
        target_ = std::move(other.target_);
        temp_ = std::move(other.temp_);
        other.temp_.clear();
    }
    return *this;
}

bool PreparedFile::Prepare(const std::filesystem::path& path, std::string_view content,
                           FileError& error) {
    Discard();
    bool given = false;
    const PieceSource once = [&](std::string_view& piece) {
        if (given) return false;
        given = true;
        piece = content;
        return true;
    };
    std::string temp;
    if (!WriteTemporary(path, once, temp, error)) return false;
    target_ = path;
    temp_ = std::move(temp);
    return true;
}

bool PreparedFile::Commit(FileError& error, const std::filesystem::path& backup) {
    if (temp_.empty()) {
        SetError(error, -1, "Nothing prepared to put in place", target_);
        return false;
    }
    std::error_code ec;
    if (!backup.empty() && fs::exists(target_, ec)) {
        FileError ignored;
        SnapshotFile(target_, backup, ignored);
    }
    const std::string temp = std::move(temp_);
    temp_.clear();
    return RenameTemporary(temp, target_, error);
}

void PreparedFile::Discard() {
    if (temp_.empty()) return;
    ::unlink(temp_.c_str());
    temp_.clear();
}

bool CopyFileAtomic(const std::filesystem::path& from, const std::filesystem::path& to,
                    FileError& error) {
    std::string content;
    if (!ReadWholeFile(from, content, error)) return false;
    return WriteFileAtomic(to, content, error);
}

bool SnapshotFile(const std::filesystem::path& from, const std::filesystem::path& to,
                  FileError& error) {
    RemoveStaleTemporaries(FolderOf(to), to.filename().string());
    const std::string temp = to.string() + std::string(kTempMark) + std::to_string(::getpid()) +
                             ".link" + std::to_string(std::random_device{}() % 1000000);
    KillPoint();
    if (::link(from.c_str(), temp.c_str()) == 0) {
        KillPoint();
        const bool renamed = ::rename(temp.c_str(), to.c_str()) == 0;
        // When both names already are one file, rename leaves the temporary name behind.
        ::unlink(temp.c_str());
        if (renamed) {
            SyncFolder(FolderOf(to));
            return true;
        }
    }
    return CopyFileAtomic(from, to, error);
}

bool RemoveFileIfPresent(const std::filesystem::path& path, FileError& error) {
    KillPoint();
    if (::unlink(path.c_str()) == 0 || errno == ENOENT) return true;
    SetError(error, errno, path);
    return false;
}

bool IsTemporaryName(const std::string& name, long& pid) {
    const size_t mark = name.rfind(kTempMark);
    if (mark == std::string::npos || mark == 0) return false;
    const char* at = name.c_str() + mark + kTempMark.size();
    char* end = nullptr;
    errno = 0;
    const long value = std::strtol(at, &end, 10);
    if (end == at || *end != '.' || errno != 0 || value <= 0 || value > INT_MAX) return false;
    if (!std::isdigit(static_cast<unsigned char>(at[0]))) return false;
    // What follows the process id: a number, or "link" and a number.
    std::string_view rest(end + 1);
    if (rest.starts_with("link")) rest.remove_prefix(4);
    if (rest.empty() || rest.find_first_not_of("0123456789") != std::string_view::npos) {
        return false;
    }
    pid = value;
    return true;
}

int RemoveStaleTemporaries(const fs::path& folder, const std::string& target) {
    const std::string prefix = target.empty() ? std::string() : target + std::string(kTempMark);
    int removed = 0;
    std::error_code ec;
    for (fs::directory_iterator it(folder, ec), end; !ec && it != end; it.increment(ec)) {
        const std::string name = it->path().filename().string();
        long pid = 0;
        if (!name.starts_with(prefix) || !IsTemporaryName(name, pid) || ProcessAlive(pid)) {
            continue;
        }
        if (::unlink(it->path().c_str()) == 0) ++removed;
    }
    return removed;
}

}  // namespace ostrel
