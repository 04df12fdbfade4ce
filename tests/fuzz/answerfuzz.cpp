// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// An answer of the server through everything that is made of it.

#include "tests/fuzz/elementnames.h"
#include "tests/fuzz/fuzztarget.h"
#include "tests/fuzz/shopscene.h"
#include "tests/fuzz/treemutator.h"

int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    static ShopScene scene;
    scene.setAnswer(QByteArray(reinterpret_cast<const char*>(data), qsizetype(size)));
    playVisit(scene);
    return 0;
}

size_t LLVMFuzzerCustomMutator(std::uint8_t* data, size_t size, size_t maximum, unsigned seed)
{
    static TreeMutator tree(elementNames());
    constexpr unsigned rawEvery = 5;
    const size_t length = seed % rawEvery == 0 ? 0 : tree.mutate(data, size, maximum, seed);
    return length > 0 ? length : LLVMFuzzerMutate(data, size, maximum);
}
