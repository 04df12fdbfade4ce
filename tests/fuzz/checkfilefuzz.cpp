// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// A check file as somebody may have typed it.

#include "tests/fuzz/fuzztarget.h"
#include "till/checks/check.h"
#include "till/checks/checkfile.h"
#include "till/failure.h"

#include <QString>

#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

namespace {

/// What a file says must be countable.
void use(const till::CheckFile& file)
{
    if (file.type == till::CheckFile::Type::Sale) {
        const till::Check check = till::Check::create(EDocumentType::Sale, 1, file.lines);
        if (check.goodsKopecks() < 0 ||
            check.document->getGoodsItems().size() != file.lines.size()) {
            std::abort();
        }
    }
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    const int memory = ::memfd_create("check", MFD_CLOEXEC);
    if (memory < 0 || ::write(memory, data, size) != ssize_t(size)) {
        std::abort();
    }
    try {
        use(till::CheckFile::read(QStringLiteral("/proc/self/fd/%1").arg(memory)));
    } catch (const till::Failure& failure) {
        if (failure.text().isEmpty() || failure.exitCode() != till::ExitCode::Usage) {
            std::abort(); // an unusable file is told so
        }
    }
    ::close(memory);
    return 0;
}
