// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/database/filelock.h"
#include "host/core/basicexception.h"
#include "tests/support/testfolder.h"

#include <csignal>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace {

TEST(FileLock, ExcludesOthersUntilItIsGone)
{
    const TestFolder folder;
    const QString file = folder.file(u"lock"_s);
    {
        const poshost::FileLock first(file);
        EXPECT_TRUE(first.isHeld());
        EXPECT_FALSE(poshost::FileLock(file).isHeld());
    }
    EXPECT_TRUE(poshost::FileLock(file).isHeld());
    struct stat information
    {};
    ASSERT_EQ(::stat(QFile::encodeName(file).constData(), &information), 0);
    EXPECT_EQ(information.st_mode & 0077u, 0u);
}

TEST(FileLock, AFileThatCannotBeMadeIsAnError)
{
    const TestFolder folder;
    EXPECT_THROW(poshost::FileLock(folder.file(u"absent/lock"_s)), BasicException);
}

TEST(FileLock, IsFreedByTheKernelWhenItsOwnerIsKilled)
{
    const TestFolder folder;
    const QString file = folder.file(u"lock"_s);
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        const poshost::FileLock held(file);
        if (::write(ready[1], held.isHeld() ? "y" : "n", 1) == 1) {
            ::pause();
        }
        ::_exit(1);
    }
    pollfd waiting{ready[0], POLLIN, 0};
    char answer = '?';
    ASSERT_EQ(::poll(&waiting, 1, 20'000), 1);
    ASSERT_EQ(::read(ready[0], &answer, 1), 1);
    EXPECT_EQ(answer, 'y');
    EXPECT_FALSE(poshost::FileLock(file).isHeld()) << "another process holds it";
    ::kill(child, SIGKILL);
    ASSERT_EQ(::waitpid(child, nullptr, 0), child);
    EXPECT_TRUE(poshost::FileLock(file).isHeld());
    ::close(ready[0]);
    ::close(ready[1]);
}

} // namespace
