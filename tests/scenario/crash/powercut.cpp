// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "tests/scenario/crash/powercut.h"

#include "tests/scenario/crash/systemcalls.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

constexpr off_t sector = 512;

std::string folderOf(const std::string& path)
{
    return path.substr(0, path.find_last_of('/'));
}

off_t lengthOf(int file)
{
    struct stat information
    {};
    return ::fstat(file, &information) == 0 ? information.st_size : 0;
}

std::uint64_t next(std::uint64_t& random)
{
    // splitmix64: small, and the same everywhere
    random += 0x9e3779b97f4a7c15U;
    std::uint64_t mixed = random;
    mixed = (mixed ^ (mixed >> 30U)) * 0xbf58476d1ce4e5b9U;
    mixed = (mixed ^ (mixed >> 27U)) * 0x94d049bb133111ebU;
    return mixed ^ (mixed >> 31U);
}

bool heads(std::uint64_t& random)
{
    return (next(random) & 1U) != 0;
}

} // namespace

PowerCut::Identity PowerCut::identityOf(int file)
{
    struct stat information
    {};
    ::fstat(file, &information);
    return {information.st_dev, information.st_ino};
}

void PowerCut::beforeChange(int file, off_t offset, size_t length)
{
    Change change{offset, std::string(length, '\0'), {}, lengthOf(file), -1};
    // the descriptor may be open for writing only
    const int reader = system_calls::open(system_calls::pathOf(file).c_str(), O_RDONLY | O_CLOEXEC);
    const ssize_t got = reader < 0 ? 0 : ::pread(reader, change.before.data(), length, offset);
    if (reader >= 0) {
        ::close(reader);
    }
    change.before.resize(size_t(std::max<ssize_t>(got, 0)));
    const Identity identity = identityOf(file);
    paths[identity] = system_calls::pathOf(file);
    unsynced[identity].push_back(std::move(change));
}

void PowerCut::afterChange(int file, off_t offset, const void* content, size_t length)
{
    Change& change = unsynced[identityOf(file)].back();
    change.offset = offset;
    change.after.assign(static_cast<const char*>(content), length);
}

void PowerCut::afterTruncation(int file, off_t length)
{
    unsynced[identityOf(file)].back().lengthAfter = length;
}

void PowerCut::created(const std::string& path)
{
    entries.push_back({path, {}, {}});
}

std::string PowerCut::nameToKeep(const std::string& path)
{
    return path + ".removed-" + std::to_string(::getpid()) + '-' + std::to_string(++removals);
}

/// What is in a folder goes with it.
void PowerCut::renamed(const std::string& from, const std::string& to)
{
    for (auto& known : paths) {
        if (known.second == from || known.second.starts_with(from + '/')) {
            known.second.replace(0, from.size(), to);
        }
    }
}

bool PowerCut::remove(const std::string& path)
{
    const std::string kept = nameToKeep(path);
    if (system_calls::rename(path.c_str(), kept.c_str()) != 0) {
        return false;
    }
    renamed(path, kept);
    entries.push_back({path, kept, {}});
    return true;
}

bool PowerCut::move(const std::string& from, const std::string& to)
{
    std::string kept = nameToKeep(to);
    if (system_calls::link(to.c_str(), kept.c_str()) != 0) {
        kept.clear(); // there is none, or it is a folder
    }
    if (system_calls::rename(from.c_str(), to.c_str()) != 0) {
        const int error = errno;
        system_calls::unlink(kept.c_str());
        errno = error;
        return false;
    }
    if (!kept.empty()) {
        renamed(to, kept);
    }
    renamed(from, to);
    entries.push_back({to, kept, from});
    return true;
}

/// Removes a kept file for good; its number may then belong to another file.
void PowerCut::discard(const std::string& kept)
{
    struct stat information
    {};
    if (::stat(kept.c_str(), &information) == 0) {
        unsynced.erase({information.st_dev, information.st_ino});
    }
    system_calls::unlink(kept.c_str());
}

void PowerCut::synced(int fileOrFolder)
{
    struct stat information
    {};
    if (::fstat(fileOrFolder, &information) != 0) {
        return;
    }
    if (!S_ISDIR(information.st_mode)) {
        unsynced.erase(identityOf(fileOrFolder));
        return;
    }
    const std::string folder = system_calls::pathOf(fileOrFolder);
    std::erase_if(entries, [this, &folder](const Entry& entry) {
        const bool here = folderOf(entry.path) == folder;
        if (here && !entry.kept.empty()) {
            discard(entry.kept);
        }
        return here;
    });
}

void PowerCut::undo(int file, const std::vector<Change>& changes)
{
    for (auto change = changes.rbegin(); change != changes.rend(); ++change) {
        system_calls::pwrite(file, change->before.data(), change->before.size(), change->offset);
        system_calls::ftruncate(file, change->lengthBefore);
    }
}

void PowerCut::redoSome(int file, const std::vector<Change>& changes, std::uint64_t& random)
{
    for (const Change& change : changes) {
        if (change.lengthAfter >= 0) {
            if (heads(random)) {
                system_calls::ftruncate(file, change.lengthAfter);
            }
            continue;
        }
        const auto end = change.offset + off_t(change.after.size());
        for (off_t from = change.offset; from < end;) {
            const off_t to = std::min(end, (from / sector + 1) * sector);
            if (heads(random)) {
                system_calls::pwrite(file, change.after.data() + (from - change.offset),
                                     size_t(to - from), from);
            }
            from = to;
        }
    }
}

void PowerCut::happen(Left left, std::uint64_t seed)
{
    std::uint64_t random = seed;
    for (const auto& [identity, changes] : unsynced) {
        const int file = system_calls::open(paths[identity].c_str(), O_RDWR | O_CLOEXEC);
        if (file < 0) {
            continue; // removed for good
        }
        undo(file, changes);
        if (left == Left::Some) {
            redoSome(file, changes, random);
        }
        ::close(file);
    }
    putBackEntries(left, random);
}

void PowerCut::putBack(const Entry& entry)
{
    if (!entry.from.empty()) {
        system_calls::rename(entry.path.c_str(), entry.from.c_str());
    }
    if (!entry.kept.empty()) {
        system_calls::rename(entry.kept.c_str(), entry.path.c_str());
    } else if (entry.from.empty() && system_calls::unlink(entry.path.c_str()) != 0) {
        ::rmdir(entry.path.c_str());
    }
}

void PowerCut::putBackEntries(Left left, std::uint64_t& random)
{
    bool isLaterNameLeft = false;
    for (auto entry = entries.rbegin(); entry != entries.rend(); ++entry) {
        const bool isName = !entry->from.empty();
        const bool survives = left == Left::Some && (heads(random) || (isName && isLaterNameLeft));
        isLaterNameLeft = isLaterNameLeft || (isName && survives);
        if (!survives) {
            putBack(*entry);
        } else if (!entry->kept.empty()) {
            system_calls::unlink(entry->kept.c_str());
        }
    }
}

void PowerCut::forgetRemoved()
{
    for (const Entry& entry : entries) {
        if (!entry.kept.empty()) {
            discard(entry.kept);
        }
    }
    entries.clear();
}
