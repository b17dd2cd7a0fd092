#include "core/platform/file_io.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <random>

namespace ostrel {
namespace {

WriteFaultHook& FaultHook() {
    static WriteFaultHook hook;
    return hook;
}

void SetError(FileError& error, int code, const std::filesystem::path& path) {
    error.code = code;
    error.message = std::string(std::strerror(code)) + ": " + path.string();
}

std::string TempNameBeside(const std::filesystem::path& path) {
    static std::mt19937 rng{std::random_device{}()};
    return path.string() + ".tmp" + std::to_string(rng() % 1000000);
}

}  // namespace

void SetWriteFaultHook(WriteFaultHook hook) {
    FaultHook() = std::move(hook);
}

bool ReadWholeFile(const std::filesystem::path& path, std::string& content, FileError& error) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        SetError(error, errno, path);
        return false;
    }
    content.clear();
    struct stat st {};
    if (::fstat(fd, &st) == 0 && st.st_size > 0) content.reserve(static_cast<size_t>(st.st_size));
    char buf[1 << 16];
    for (;;) {
        ssize_t n = ::read(fd, buf, sizeof buf);
        if (n == 0) break;
        if (n < 0) {
            if (errno == EINTR) continue;
            SetError(error, errno, path);
            ::close(fd);
            return false;
        }
        content.append(buf, static_cast<size_t>(n));
    }
    ::close(fd);
    return true;
}

bool ReadFileInPieces(const std::filesystem::path& path, size_t piece,
                      const std::function<void(std::string_view)>& take, FileError& error) {
    int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) {
        SetError(error, errno, path);
        return false;
    }
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

bool WriteFileAtomicFrom(const std::filesystem::path& path, const PieceSource& next,
                         FileError& error) {
    const std::string temp = TempNameBeside(path);
    int fd = ::open(temp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0644);
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
    if (::rename(temp.c_str(), path.c_str()) != 0) {
        int code = errno;
        ::unlink(temp.c_str());
        SetError(error, code, path);
        return false;
    }
    return true;
}

bool CopyFileAtomic(const std::filesystem::path& from, const std::filesystem::path& to,
                    FileError& error) {
    std::string content;
    if (!ReadWholeFile(from, content, error)) return false;
    return WriteFileAtomic(to, content, error);
}

bool SnapshotFile(const std::filesystem::path& from, const std::filesystem::path& to,
                  FileError& error) {
    const std::string temp = TempNameBeside(to);
    if (::link(from.c_str(), temp.c_str()) == 0) {
        const bool renamed = ::rename(temp.c_str(), to.c_str()) == 0;
        // When both names already are one file, rename leaves the temporary name behind.
        ::unlink(temp.c_str());
        if (renamed) return true;
    }
    return CopyFileAtomic(from, to, error);
}

bool RemoveFileIfPresent(const std::filesystem::path& path, FileError& error) {
    if (::unlink(path.c_str()) == 0 || errno == ENOENT) return true;
    SetError(error, errno, path);
    return false;
}

}  // namespace ostrel
