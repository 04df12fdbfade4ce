// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/page/exchangebook.h"

#include "simulator/documents/endpoints.h"
#include "simulator/documents/names.h"
#include "simulator/documents/rejection.h"
#include "simulator/documents/requestfacts.h"
#include "simulator/documents/xmlreader.h"

#include <QDateTime>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryFile>

#include <algorithm>
#include <cerrno>
#include <stdexcept>
#include <unistd.h>
#include <utility>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

/// What a row says of the check. A fault may have struck before anybody had looked at it.
std::pair<QString, QString> checkAndCard(const Request& request, const Answer& answer)
{
    if (!answer.fault || !answer.checkId.isEmpty()) {
        return {answer.checkId, answer.cardNumber};
    }
    try {
        const Document document = readXml(request.body);
        return {document.root().child(names::id).text(),
                document.root().child(names::cardNumber).text()};
    } catch (const Rejection&) {
        return {};
    }
}

double milliseconds(const Request& request)
{
    constexpr double microsecondsInOne = 1000;
    const auto took = std::chrono::steady_clock::now() - request.began;
    return request.began == std::chrono::steady_clock::time_point()
               ? 0
               : static_cast<double>(
                     std::chrono::duration_cast<std::chrono::microseconds>(took).count()) /
                     microsecondsInOne;
}

/// A row without its number, which is put before the rest.
QByteArray rowRest(const Request& request, const Answer& answer)
{
    const auto [check, card] = checkAndCard(request, answer);
    const QJsonObject row{{u"time"_s, QDateTime::currentMSecsSinceEpoch()},
                          {u"method"_s, QString::fromUtf8(request.method)},
                          {u"path"_s, QString::fromUtf8(request.path)},
                          {u"operation"_s, endpointOf(request)},
                          {u"check"_s, check},
                          {u"card"_s, card},
                          {u"status"_s, answer.status},
                          {u"reason"_s, answer.reason},
                          {u"milliseconds"_s, milliseconds(request)},
                          {u"fault"_s, answer.fault ? answer.fault->name() : QString()},
                          {u"requestType"_s, QString::fromUtf8(request.contentType)},
                          {u"requestBytes"_s, request.body.size()},
                          {u"answerType"_s, QString::fromUtf8(answer.contentType)},
                          {u"answerBytes"_s, answer.body.size()}};
    return QJsonDocument(row).toJson(QJsonDocument::Compact);
}

} // namespace

/// One file, open for as long as somebody reads it.
struct ExchangeBook::File
{
    explicit File(const QString& folder) : file(folder + u"/exchanges-XXXXXX"_s)
    {
        isOpen = file.open(); // without a name: nothing is left of it, however the process ends
    }

    [[nodiscard]] bool write(const QByteArray& from)
    {
        qsizetype done = 0;
        while (done < from.size()) {
            const ssize_t wrote = ::pwrite(file.handle(), from.constData() + done,
                                           static_cast<size_t>(from.size() - done), size + done);
            if (wrote <= 0) {
                if (wrote < 0 && errno == EINTR) {
                    continue;
                }
                return false;
            }
            done += wrote;
        }
        size += done;
        return true;
    }

    [[nodiscard]] QByteArray read(qint64 at, quint32 count) const
    {
        QByteArray to(static_cast<qsizetype>(count), Qt::Uninitialized);
        qsizetype done = 0;
        while (done < to.size()) {
            const ssize_t got = ::pread(file.handle(), to.data() + done,
                                        static_cast<size_t>(to.size() - done), at + done);
            if (got <= 0) {
                if (got < 0 && errno == EINTR) {
                    continue;
                }
                throw std::runtime_error("an exchange cannot be read back from the disk");
            }
            done += got;
        }
        return to;
    }

    QTemporaryFile file;
    bool isOpen = false;
    qint64 size = 0; // written by one thread at a time, read by it only
};

ExchangeBook::ExchangeBook(QString folderOfFiles) : ExchangeBook(std::move(folderOfFiles), Limits())
{}

ExchangeBook::ExchangeBook(QString folderOfFiles, const Limits& bookLimits)
    : folder(std::move(folderOfFiles)), limits(bookLimits)
{}

ExchangeBook::~ExchangeBook() = default;

qint64 ExchangeBook::add(const Request& request, const Answer& answer)
{
    const QByteArray rest = rowRest(request, answer);
    if (endpointOf(request) == endpoints::checkConfirm) {
        ++confirmed;
    }
    const std::scoped_lock lock(mutex);
    const qint64 number = first + static_cast<qint64>(places.size());
    const QByteArray row = "{\"number\":" + QByteArray::number(number) + ',' + rest.sliced(1);
    places.push_back(write(row, request.body, answer.body));
    while (places.size() > limits.exchanges) {
        forgetOldest();
    }
    return number;
}

/// The file that takes so many bytes more, after older ones have made room for it; null where there
/// can be none.
std::shared_ptr<ExchangeBook::File> ExchangeBook::fileFor(qint64 count)
{
    if (files.empty() || files.back()->size >= limits.fileBytes) {
        auto file = std::make_shared<File>(folder);
        if (!file->isOpen) {
            return nullptr;
        }
        files.push_back(std::move(file));
    }
    while (bytes + count > limits.allBytes && files.size() > 1) {
        forgetOldest();
    }
    return files.back();
}

ExchangeBook::Place ExchangeBook::write(const QByteArray& row, const QByteArray& request,
                                        const QByteArray& answer)
{
    const QByteArray whole = row + request + answer;
    const std::shared_ptr<File> file = fileFor(whole.size());
    if (!file) {
        return {};
    }
    const qint64 at = file->size;
    if (!file->write(whole)) {
        return {};
    }
    bytes += whole.size();
    return {file, static_cast<quint32>(at), static_cast<quint32>(row.size()),
            static_cast<quint32>(request.size()), static_cast<quint32>(answer.size())};
}

/// Forgets what is in the oldest file, or the oldest exchange where that is in none.
void ExchangeBook::forgetOldest()
{
    std::shared_ptr<File> oldest = files.empty() ? nullptr : files.front();
    if (!places.empty()) {
        oldest = places.front().file;
    }
    while (!places.empty() && places.front().file == oldest) {
        places.pop_front();
        ++first;
    }
    if (!files.empty() && files.front() == oldest) {
        bytes -= oldest->size;
        files.pop_front();
    }
}

ExchangeBook::Span ExchangeBook::span() const
{
    const std::scoped_lock lock(mutex);
    return {first, first + static_cast<qint64>(places.size()) - 1};
}

std::optional<ExchangeBook::Place> ExchangeBook::placeOf(qint64 number) const
{
    const std::scoped_lock lock(mutex);
    if (number < first || number >= first + static_cast<qint64>(places.size())) {
        return std::nullopt;
    }
    return places[static_cast<size_t>(number - first)];
}

QByteArrayList ExchangeBook::rows(qint64 after, qint64 most) const
{
    std::vector<Place> wanted;
    {
        const std::scoped_lock lock(mutex);
        const qint64 from = std::max(after + 1, first) - first;
        const qint64 to = std::min<qint64>(static_cast<qint64>(places.size()), from + most);
        for (qint64 i = from; i < to; ++i) {
            wanted.push_back(places[static_cast<size_t>(i)]);
        }
    }
    QByteArrayList rows;
    for (const Place& place : wanted) {
        if (place.file) {
            rows.append(place.file->read(place.at, place.row));
        }
    }
    return rows;
}

std::optional<ExchangeBook::Entry> ExchangeBook::read(qint64 number) const
{
    const std::optional<Place> place = placeOf(number);
    if (!place || !place->file) {
        return std::nullopt;
    }
    const QByteArray whole =
        place->file->read(place->at, place->row + place->request + place->answer);
    return Entry{whole.first(place->row), whole.sliced(place->row, place->request),
                 whole.last(place->answer)};
}

} // namespace simulator
