// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// Runs a program and writes into a file how much memory it had at most, in KiB. The kernel counts
// what the process that starts a program has at that moment as the program's own, so whoever starts
// it has to be small: a test is not.

#include <cstdio>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

int main(int argc, char** argv)
{
    constexpr int leastArguments = 3;
    if (argc < leastArguments) {
        std::fputs("usage: orva-peak FILE PROGRAM [ARGUMENT...]\n", stderr);
        return 2;
    }
    const pid_t child = ::fork();
    if (child == 0) {
        ::execv(argv[2], argv + 2);
        std::perror(argv[2]);
        ::_exit(127);
    }
    int status = 0;
    rusage usage{};
    if (child < 0 || ::wait4(child, &status, 0, &usage) != child || !WIFEXITED(status)) {
        return 126;
    }
    std::FILE* const file = std::fopen(argv[1], "w");
    if (file == nullptr || std::fprintf(file, "%ld\n", usage.ru_maxrss) < 0 ||
        std::fclose(file) != 0) {
        std::perror(argv[1]);
        return 126;
    }
    return WEXITSTATUS(status);
}
