// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/pagefiles.h"

#include "simulator/documents/rejection.h"

#include <QDir>
#include <QFile>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

QByteArray typeOf(const QString& name)
{
    return name.endsWith(".html"_L1)  ? "text/html; charset=utf-8"
           : name.endsWith(".css"_L1) ? "text/css; charset=utf-8"
           : name.endsWith(".svg"_L1) ? "image/svg+xml"
                                      : "text/javascript; charset=utf-8";
}

/// A file of the page; only names that are there are looked at, so none leads elsewhere.
Answer fileAnswer(const QString& name)
{
    QFile file(u":/page/"_s + name);
    if (!QDir(u":/page"_s).entryList(QDir::Files).contains(name) ||
        !file.open(QIODevice::ReadOnly)) {
        throw Rejection(404, u"The page has no such file"_s);
    }
    Answer answer;
    answer.contentType = typeOf(name);
    answer.body = file.readAll();
    return answer;
}

} // namespace

std::vector<AdminRoute> pageFileRoutes(const QByteArray& token)
{
    return {{"GET", "/",
             [token](const AdminCall&) {
                 Answer answer = fileAnswer(u"index.html"_s);
                 answer.body.replace("@TOKEN@", token);
                 return answer;
             }},
            {"GET", "/page/{file}", [](const AdminCall& call) { return fileAnswer(call.part); }}};
}

} // namespace simulator
