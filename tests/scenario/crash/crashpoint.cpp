// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Preloaded into a program, counts its calls that write, sync, send or receive and stops it before
// the one that it is told, as a kill or as a power cut would. Told by the environment:
//   ORVA_CRASH_RECORD  the file of the CrashRecord; without it nothing is counted
//   ORVA_CRASH_FOLDER  only files in this folder count, beside internet sockets and the output
//   ORVA_CRASH_AT      the number of the call, from 1; 0 for none
//   ORVA_CRASH_WAY     "kill", "cut" (nothing unsynced is left), "tear" (some of it is)
//   ORVA_CRASH_SEED    for "tear"
//   ORVA_CRASH_TRACE   a file to list the calls in

#include "tests/scenario/crash/crashpoint.h"

#include "tests/scenario/crash/crashrecord.h"
#include "tests/scenario/crash/powercut.h"
#include "tests/scenario/crash/systemcalls.h"

#include <array>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <fcntl.h>
#include <mutex>
#include <string>
#include <sys/mman.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

enum class Way
{
    Kill,
    Cut,
    Tear
};

std::string environment(const char* name)
{
    const char* value = std::getenv(name);
    return value == nullptr ? std::string() : value;
}

Way wayOf(const std::string& name)
{
    if (name == "cut") {
        return Way::Cut;
    }
    return name == "tear" ? Way::Tear : Way::Kill;
}

CrashRecord* mapRecord(const std::string& path)
{
    if (path.empty()) {
        return nullptr;
    }
    const int file = system_calls::open(path.c_str(), O_RDWR | O_CLOEXEC);
    void* memory =
        ::mmap(nullptr, sizeof(CrashRecord), PROT_READ | PROT_WRITE, MAP_SHARED, file, 0);
    if (file < 0 || memory == MAP_FAILED) {
        std::fprintf(stderr, "crash points: %s: %s\n", path.c_str(), std::strerror(errno));
        std::abort();
    }
    ::close(file);
    return static_cast<CrashRecord*>(memory);
}

/// What the environment asks for, and the calls so far.
class CrashPoint
{
public:
    CrashPoint()
        : folder(environment("ORVA_CRASH_FOLDER") + '/'),
          at(std::strtoull(environment("ORVA_CRASH_AT").c_str(), nullptr, 10)),
          seed(std::strtoull(environment("ORVA_CRASH_SEED").c_str(), nullptr, 10)),
          way(wayOf(environment("ORVA_CRASH_WAY"))),
          record(mapRecord(environment("ORVA_CRASH_RECORD")))
    {
        const std::string file = environment("ORVA_CRASH_TRACE");
        if (!file.empty()) {
            trace =
                system_calls::open(file.c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0600);
        }
    }

    ~CrashPoint()
    {
        const std::lock_guard guard(files);
        disk.forgetRemoved();
        record = nullptr; // what other objects still do at the end does not count
    }
    CrashPoint(const CrashPoint&) = delete;
    CrashPoint& operator=(const CrashPoint&) = delete;

    /// Whether what is done to the file has to be noted for a power cut.
    bool notes(const std::string& path) const
    {
        return record != nullptr && way != Way::Kill && path.starts_with(folder);
    }

    void call(const char* name, int file)
    {
        if (record == nullptr) {
            return;
        }
        const int saved = errno;
        const std::string target = targetOf(file);
        if (!target.empty()) {
            count(std::string(name) + ' ' + target);
        }
        errno = saved;
    }

    void outputs(std::FILE* stream)
    {
        if (record != nullptr && stream == stdout) {
            count("write output");
        }
    }

    void call(const char* name, const char* path)
    {
        if (record != nullptr && std::string(path).starts_with(folder)) {
            count(std::string(name) + ' ' + std::string(path).substr(folder.size()));
        }
    }

    std::mutex files; ///< from before a file is changed until that is noted
    PowerCut disk;

private:
    /// How a counted descriptor is called; empty for those that do not count.
    std::string targetOf(int file) const
    {
        struct stat information
        {};
        if (::fstat(file, &information) != 0) {
            return {};
        }
        if (S_ISREG(information.st_mode) || S_ISDIR(information.st_mode)) {
            const std::string path =
                system_calls::pathOf(file) + (S_ISDIR(information.st_mode) ? "/" : "");
            return path.starts_with(folder) ? "./" + path.substr(folder.size()) : std::string();
        }
        if (S_ISSOCK(information.st_mode)) {
            sockaddr_storage address{};
            socklen_t size = sizeof address;
            const bool named =
                ::getsockname(file, reinterpret_cast<sockaddr*>(&address), &size) == 0;
            const bool internet = address.ss_family == AF_INET || address.ss_family == AF_INET6;
            return named && internet ? "connection" : std::string();
        }
        return {};
    }

    void count(const std::string& what)
    {
        const std::uint64_t number = record->calls.fetch_add(1) + 1;
        if (trace >= 0) {
            const std::string line = std::to_string(number) + ' ' + what + '\n';
            ::syscall(SYS_write, trace, line.data(), line.size());
        }
        if (number == at && record->stopped.exchange(1) == 0) {
            std::snprintf(record->at, sizeof record->at, "%s", what.c_str());
            stop();
        }
    }

    [[noreturn]] void stop()
    {
        if (way != Way::Kill) {
            const std::lock_guard guard(files);
            disk.happen(way == Way::Cut ? PowerCut::Left::Nothing : PowerCut::Left::Some, seed);
            die();
        }
        die();
    }

    [[noreturn]] static void die()
    {
        ::kill(::getpid(), SIGKILL);
        for (;;) {
            ::pause();
        }
    }

    const std::string folder;
    const std::uint64_t at;
    const std::uint64_t seed;
    const Way way;
    CrashRecord* record;
    int trace = -1;
};

/// Made at the first call, which may be before this library's own start.
CrashPoint& crashPoint()
{
    static CrashPoint point;
    return point;
}

template <typename Call>
auto changing(int file, off_t offset, size_t length, const void* content, const Call& call)
{
    CrashPoint& point = crashPoint();
    if (!point.notes(system_calls::pathOf(file))) {
        return call();
    }
    const std::lock_guard guard(point.files);
    point.disk.beforeChange(file, offset, length);
    const auto done = call();
    const int saved = errno;
    point.disk.afterChange(file, offset, content, done > 0 ? size_t(done) : 0);
    errno = saved;
    return done;
}

ssize_t writeAt(int file, const void* content, size_t length, off_t offset)
{
    crashPoint().call("pwrite", file);
    return changing(file, offset, length, content,
                    [&] { return system_calls::pwrite(file, content, length, offset); });
}

int truncateTo(int file, off_t length)
{
    CrashPoint& point = crashPoint();
    point.call("ftruncate", file);
    if (!point.notes(system_calls::pathOf(file))) {
        return system_calls::ftruncate(file, length);
    }
    const std::lock_guard guard(point.files);
    struct stat information
    {};
    ::fstat(file, &information);
    point.disk.beforeChange(file, length, size_t(std::max<off_t>(0, information.st_size - length)));
    const int done = system_calls::ftruncate(file, length);
    point.disk.afterTruncation(file, done == 0 ? length : information.st_size);
    return done;
}

int sync(const char* name, long number, int file)
{
    CrashPoint& point = crashPoint();
    point.call(name, file);
    const int done = int(::syscall(number, file));
    if (done == 0 && point.notes(system_calls::pathOf(file) + '/')) {
        const std::lock_guard guard(point.files);
        point.disk.synced(file);
    }
    return done;
}

int openNoting(const char* name, int flags, mode_t mode)
{
    CrashPoint& point = crashPoint();
    const std::string path = (flags & O_CREAT) == 0 ? std::string() : crash_point::absolute(name);
    if (path.empty() || !point.notes(path)) {
        return system_calls::open(name, flags, mode);
    }
    const std::lock_guard guard(point.files);
    const bool missing = ::access(name, F_OK) != 0;
    const int file = system_calls::open(name, flags, mode);
    if (file >= 0 && missing) {
        point.disk.created(path);
    }
    return file;
}

mode_t modeOf(int flags, va_list arguments)
{
    return (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
}

} // namespace

std::string crash_point::absolute(const char* path)
{
    std::array<char, PATH_MAX> folder{};
    const bool isRelative = path[0] != '/' && ::getcwd(folder.data(), folder.size()) != nullptr;
    return isRelative ? std::string(folder.data()) + '/' + path : std::string(path);
}

void crash_point::called(const char* name, const std::string& path)
{
    crashPoint().call(name, path.c_str());
}

bool crash_point::change(const std::string& path, const std::function<void(PowerCut&)>& change)
{
    CrashPoint& point = crashPoint();
    if (!point.notes(path)) {
        return false;
    }
    const std::lock_guard guard(point.files);
    change(point.disk);
    return true;
}

// The calls that SQLite, libcurl, the HTTP server and Qt make, under all their names.
#pragma GCC visibility push(default)
extern "C" {

ssize_t write(int file, const void* content, size_t length)
{
    crashPoint().call("write", file);
    return changing(file, ::lseek(file, 0, SEEK_CUR), length, content,
                    [&] { return ::syscall(SYS_write, file, content, length); });
}

size_t fwrite(const void* content, size_t size, size_t items, std::FILE* stream)
{
    using Function = size_t(const void*, size_t, size_t, std::FILE*);
    static auto* const next = reinterpret_cast<Function*>(::dlsym(RTLD_NEXT, "fwrite"));
    crashPoint().outputs(stream);
    return next(content, size, items, stream);
}

ssize_t pwrite(int file, const void* content, size_t length, off_t offset)
{
    return writeAt(file, content, length, offset);
}

ssize_t pwrite64(int file, const void* content, size_t length, off64_t offset)
{
    return writeAt(file, content, length, offset);
}

int ftruncate(int file, off_t length) noexcept
{
    return truncateTo(file, length);
}

int ftruncate64(int file, off64_t length) noexcept
{
    return truncateTo(file, length);
}

int fsync(int file)
{
    return sync("fsync", SYS_fsync, file);
}

int fdatasync(int file)
{
    return sync("fdatasync", SYS_fdatasync, file);
}

int open(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openNoting(path, flags, mode);
}

int open64(const char* path, int flags, ...)
{
    va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = modeOf(flags, arguments);
    va_end(arguments);
    return openNoting(path, flags | O_LARGEFILE, mode);
}

ssize_t sendto(int socket, const void* content, size_t length, int flags, const sockaddr* address,
               socklen_t size)
{
    crashPoint().call("send", socket);
    return ::syscall(SYS_sendto, socket, content, length, flags, address, size);
}

ssize_t send(int socket, const void* content, size_t length, int flags)
{
    return sendto(socket, content, length, flags, nullptr, 0);
}

ssize_t sendmsg(int socket, const msghdr* message, int flags)
{
    crashPoint().call("send", socket);
    return ::syscall(SYS_sendmsg, socket, message, flags);
}

ssize_t recvfrom(int socket, void* content, size_t length, int flags, sockaddr* address,
                 socklen_t* size)
{
    crashPoint().call("receive", socket);
    return ::syscall(SYS_recvfrom, socket, content, length, flags, address, size);
}

ssize_t recv(int socket, void* content, size_t length, int flags)
{
    return recvfrom(socket, content, length, flags, nullptr, nullptr);
}

ssize_t recvmsg(int socket, msghdr* message, int flags)
{
    crashPoint().call("receive", socket);
    return ::syscall(SYS_recvmsg, socket, message, flags);
}

ssize_t __recv_chk(int socket, void* content, size_t length, size_t, int flags) // NOLINT
{
    return recvfrom(socket, content, length, flags, nullptr, nullptr);
}

} // extern "C"
#pragma GCC visibility pop
