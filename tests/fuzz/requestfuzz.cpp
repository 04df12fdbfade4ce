// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

// What somebody may send to the simulator: all three endpoints, one after another.

#include "simulator/credentials.h"
#include "simulator/rules/rulesreader.h"
#include "simulator/service.h"
#include "tests/fuzz/elementnames.h"
#include "tests/fuzz/fuzztarget.h"
#include "tests/fuzz/treemutator.h"

#include <QCoreApplication>
#include <QTemporaryDir>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace {

/// A server whose database lies in a folder that goes with the process.
struct Server
{
    /// moreRules: what stands before the built-in ones
    explicit Server(const QByteArray& moreRules)
        : rules(simulator::readRules(moreRules + simulator::builtInRules(), u"rules"_s))
    {}

    QTemporaryDir folder{QDir::tempPath() + u"/orva-fuzz-request-XXXXXX"_s};
    simulator::Rules rules;
    simulator::Service service{rules, folder.filePath(u"server.sqlite"_s)};
};

QCoreApplication& application()
{
    static int count = 1;
    static char name[] = "fuzz";
    static char* arguments[] = {name, nullptr};
    static QCoreApplication object(count, arguments);
    return object;
}

} // namespace

int LLVMFuzzerTestOneInput(const std::uint8_t* data, size_t size)
{
    static const QCoreApplication& needed = application(); // by the database's driver
    static_cast<void>(needed);
    static Server server("");
    static Server strict("strict = true\n");
    simulator::Request request;
    request.method = "POST";
    request.authorization = simulator::authorizationValue(server.rules.user, server.rules.password,
                                                          server.rules.apiKey);
    request.body = QByteArray(reinterpret_cast<const char*>(data), qsizetype(size));
    for (const char* path : {"/api/1.x/precheck", "/api/1.x/paymenttry", "/api/1.x/checkconfirm"}) {
        request.path = path;
        for (Server* asked : {&server, &strict}) {
            const simulator::Answer answer = asked->service.handle(request);
            const bool refused = answer.status >= 400;
            if (answer.status < 200 || answer.status == 500 || refused == answer.reason.isEmpty()) {
                std::abort(); // every refusal has a reason, and nothing may break the server itself
            }
        }
    }
    return 0;
}

size_t LLVMFuzzerCustomMutator(std::uint8_t* data, size_t size, size_t maximum, unsigned seed)
{
    static TreeMutator tree(elementNames());
    constexpr unsigned rawEvery = 5;
    const size_t length = seed % rawEvery == 0 ? 0 : tree.mutate(data, size, maximum, seed);
    return length > 0 ? length : LLVMFuzzerMutate(data, size, maximum);
}
