// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/service.h"

#include "host/database/databasefailure.h"
#include "simulator/credentials.h"
#include "simulator/documents/checkreader.h"
#include "simulator/documents/endpoints.h"
#include "simulator/documents/names.h"
#include "simulator/documents/rejection.h"
#include "simulator/documents/requestfacts.h"
#include "simulator/documents/requestforms.h"
#include "simulator/documents/xmlreader.h"
#include "simulator/documents/xmlwriter.h"
#include "simulator/ledger/checkdesk.h"
#include "simulator/rules/cannedanswers.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

const QByteArray precheckPath = endpoints::pathOf(endpoints::precheck);
const QByteArray paymentTryPath = endpoints::pathOf(endpoints::paymentTry);
const QByteArray checkConfirmPath = endpoints::pathOf(endpoints::checkConfirm);

bool isKnownPath(const QByteArray& path)
{
    return path == precheckPath || path == paymentTryPath || path == checkConfirmPath;
}

Answer accepted(const Document& document)
{
    Answer answer;
    answer.contentType = "application/xml; charset=utf-8";
    answer.body = writeXml(document.root());
    return answer;
}

/// The answer to a payment try or a confirmation: the check's identifier.
Document acknowledgement(const Check& check)
{
    Document document(names::rawCheck);
    document.root().append(names::id, check.id);
    return document;
}

} // namespace

/// The rules and what goes with them.
struct Service::Following
{
    explicit Following(const Rules& given)
        : rules(std::make_shared<const Rules>(given)),
          expectedAuthorization(authorizationValue(given.user, given.password, given.apiKey)),
          answers(given.answers)
    {}

    const std::shared_ptr<const Rules> rules;
    const QByteArray expectedAuthorization;
    CannedAnswers answers;
};

Service::Service(const Rules& serviceRules, const QString& databasePath, Habits deskHabits)
    : following(std::make_shared<Following>(serviceRules)), habits(std::move(deskHabits))
{
    worker.run([&] {
        database = std::make_unique<Database>(databasePath);
        desk = std::make_unique<CheckDesk>(following->rules, *database, habits);
    });
}

Service::~Service()
{
    worker.run([this] {
        desk.reset();
        database.reset();
    });
}

void Service::setRules(const Rules& newRules)
{
    const auto next = std::make_shared<Following>(newRules);
    worker.run([&] { desk = std::make_unique<CheckDesk>(next->rules, *database, habits); });
    const std::scoped_lock lock(mutex);
    following = next;
}

LedgerView Service::ledger()
{
    const std::shared_ptr<Following> now = current();
    return worker.run([&] { return readLedger(*database, *now->rules); });
}

std::shared_ptr<const Rules> Service::rules() const
{
    return current()->rules;
}

QByteArray Service::authorization() const
{
    return current()->expectedAuthorization;
}

std::shared_ptr<Service::Following> Service::current() const
{
    const std::scoped_lock lock(mutex);
    return following;
}

/// What is wrong with a request, whatever its body is.
std::optional<Answer> Service::objection(const Request& request, const Following& now)
{
    if (!isKnownPath(request.path)) {
        return refusal(404, u"There is nothing here: the addresses are %1, %2 and %3"_s.arg(
                                QLatin1StringView(precheckPath), QLatin1StringView(paymentTryPath),
                                QLatin1StringView(checkConfirmPath)));
    }
    if (request.method != "POST") {
        return refusal(405, u"This address takes POST only"_s);
    }
    if (!isAuthorized(request.authorization, now.expectedAuthorization)) {
        return refusal(401, request.authorization.isEmpty()
                                ? u"The Authorization header is missing"_s
                                : u"The user, the password or the key is wrong"_s);
    }
    return std::nullopt;
}

bool Service::admits(const Request& request) const
{
    return !objection(request, *current());
}

Answer Service::handle(const Request& request)
{
    const std::shared_ptr<Following> now = current();
    if (const std::optional<Answer> refused = objection(request, *now)) {
        return *refused;
    }
    Answer about; // what the log needs is known in part before a rejection
    Answer answer;
    try {
        answer = handleCheck(request, *now, about);
    } catch (const Rejection& rejection) {
        answer = refusal(rejection.status, rejection.reason);
    } catch (const std::overflow_error&) {
        answer = refusal(424, u"The amounts of the check are too large"_s);
    } catch (const poshost::DatabaseFailure& failure) {
        answer = refusal(500, QString::fromUtf8(DatabaseError(failure).what()));
    } catch (const std::exception& error) {
        answer = refusal(500, QString::fromUtf8(error.what()));
    }
    answer.checkId = about.checkId;
    answer.cardNumber = about.cardNumber;
    return answer;
}

Answer Service::handleCheck(const Request& request, Following& now, Answer& about)
{
    const Document read = readXml(request.body);
    const Element document = read.root();
    about.checkId = document.child(names::id).text();
    about.cardNumber = document.child(names::cardNumber).text();
    const QString endpoint = endpointOf(request);
    if (now.rules->isStrict) {
        if (const std::optional<QString> objection = requestObjection(document, endpoint)) {
            throw Rejection(400, *objection);
        }
    }
    QString whyNone;
    if (const std::optional<Answer> canned =
            now.answers.take(endpoint, about.cardNumber, whyNone)) {
        return *canned;
    }
    if (now.rules->refusesUnmatched) {
        throw Rejection(400, whyNone);
    }
    return handleKnown(request.path, readCheck(document), document);
}

Answer Service::handleKnown(const QByteArray& path, const Check& check, const Element& document)
{
    if (path == precheckPath) {
        return accepted(worker.run([&] { return desk->precheck(check, document); }));
    }
    if (path == paymentTryPath) {
        worker.run([&] { desk->paymentTry(check, document); });
    } else {
        worker.run([&] { desk->confirm(check, document); });
    }
    return accepted(acknowledgement(check));
}

} // namespace simulator
