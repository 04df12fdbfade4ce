// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/desk/precheckdurations.h"

#include "host/database/database.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <type_traits>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till {
namespace {

using Counts = PrecheckDurations::Counts;

/// What stands in the file, in this machine's order of bytes: it never leaves it.
struct Content
{
    quint64 mark = 0x6f727661'70726531; // this form of the content
    Counts counts;
    quint64 sum = 0; ///< over the counts
};
static_assert(std::has_unique_object_representations_v<Content>);

quint64 sumOf(const Counts& counts)
{
    constexpr quint64 factor = 1099511628211U; // of FNV
    quint64 sum = counts.microseconds + 1;
    for (const quint64 count : counts.inClass) {
        sum = (sum ^ count) * factor;
    }
    return sum;
}

Counts readFrom(int descriptor)
{
    Content content;
    const bool isWhole = ::pread(descriptor, &content, sizeof content, 0) == sizeof content;
    return isWhole && content.mark == Content().mark && content.sum == sumOf(content.counts)
               ? content.counts
               : Counts();
}

/// Made with the rights of the database, so that all who sell on it count in it.
/// @return below 0: it cannot be written
int openedForWriting(const QString& file)
{
    constexpr int manner = O_RDWR | O_CLOEXEC | O_NOFOLLOW;
    const QByteArray name = QFile::encodeName(file);
    const int known = ::open(name.constData(), manner);
    if (known >= 0 || errno != ENOENT) {
        return known;
    }
    const int made = ::open(name.constData(), manner | O_CREAT | O_EXCL, 0600);
    if (made >= 0 &&
        poshost::Database::rightsOf(file).testFlag(QFileDevice::Permission::WriteGroup)) {
        [[maybe_unused]] const int failed =
            ::fchmod(made, S_IRUSR | S_IWUSR | S_IRGRP | S_IWGRP); // then it is the owner's alone
    }
    return made;
}

bool lockAtOnce(int descriptor)
{
    struct flock whole
    {};
    whole.l_type = F_WRLCK;
    whole.l_whence = SEEK_SET;
    return ::fcntl(descriptor, F_OFD_SETLK, &whole) == 0;
}

} // namespace

PrecheckDurations::PrecheckDurations(const QString& databaseFile)
    : file(databaseFile + u".prechecks"_s)
{}

void PrecheckDurations::add(std::chrono::microseconds duration) const
{
    const int descriptor = openedForWriting(file);
    if (descriptor < 0) {
        return;
    }
    if (lockAtOnce(descriptor)) {
        Content content;
        content.counts = readFrom(descriptor);
        const double seconds = std::chrono::duration<double>(duration).count();
        const auto found = std::lower_bound(ends.cbegin(), ends.cend(), seconds);
        ++content.counts.inClass.at(static_cast<std::size_t>(found - ends.cbegin()));
        content.counts.microseconds += static_cast<quint64>(std::max<qint64>(0, duration.count()));
        content.sum = sumOf(content.counts);
        [[maybe_unused]] const auto written = ::pwrite(descriptor, &content, sizeof content, 0);
    }
    ::close(descriptor); // which frees the lock
}

Counts PrecheckDurations::counts() const
{
    const int descriptor =
        ::open(QFile::encodeName(file).constData(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW);
    if (descriptor < 0) {
        return {};
    }
    const Counts found = readFrom(descriptor);
    ::close(descriptor);
    return found;
}

} // namespace till
