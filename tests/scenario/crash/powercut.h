// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <sys/types.h>
#include <utility>
#include <vector>

/// Knows what a disk would not have kept yet: the content of every write, truncation, creation,
/// removal and new name in a folder since the file, or for the last three its folder, was synced.
/// Not safe for threads: the caller holds a lock over a call and its being noted.
class PowerCut
{
public:
    /// What is left of the things not synced.
    enum class Left
    {
        Nothing,
        /// Each sector, creation and removal by itself, at random: a disk writes in its own order.
        /// A new name stays only with those given before it, which file systems keep in order.
        Some
    };

    /// Must be called before the file is changed in that range; a truncation is a change from the
    /// new length on.
    void beforeChange(int file, off_t offset, size_t length);
    void afterChange(int file, off_t offset, const void* content, size_t length);
    void afterTruncation(int file, off_t length);
    void created(const std::string& path);
    /// Removes the file in such a way that it can be brought back. @return false with errno set
    bool remove(const std::string& path);
    /// Gives a file or folder another name, in place of a file that has it, in such a way that it
    /// can be taken back. @return false with errno set
    bool move(const std::string& from, const std::string& to);
    /// What was noted of a file, or of the entries of a folder, is durable from here on.
    void synced(int fileOrFolder);
    /// Leaves the folder as the cut would.
    void happen(Left left, std::uint64_t seed);
    /// The program has ended by itself: what was removed stays so.
    void forgetRemoved();

private:
    using Identity = std::pair<dev_t, ino_t>;

    struct Change
    {
        off_t offset;
        std::string before; ///< shorter than the change where the file was
        std::string after;
        off_t lengthBefore;
        off_t lengthAfter; ///< of a truncation, else -1
    };
    struct Entry
    {
        std::string path;
        std::string kept; ///< where a removed file is meanwhile; empty for a created one
        std::string from; ///< of one that has got another name
    };

    static Identity identityOf(int file);
    static void undo(int file, const std::vector<Change>& changes);
    static void redoSome(int file, const std::vector<Change>& changes, std::uint64_t& random);
    std::string nameToKeep(const std::string& path);
    void renamed(const std::string& from, const std::string& to);
    void discard(const std::string& kept);
    static void putBack(const Entry& entry);
    void putBackEntries(Left left, std::uint64_t& random);

    std::map<Identity, std::vector<Change>> unsynced;
    std::map<Identity, std::string> paths;
    std::vector<Entry> entries;
    int removals = 0;
};
