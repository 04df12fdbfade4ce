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
#include "simulator/mismatch/explainer.h"
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

/// Refuses a request that does not fit the schema of its address.
void requireForm(const Element& document, const QString& endpoint)
{
    const std::optional<QString> objection = requestObjection(document, endpoint);
    if (!objection) {
        return;
    }
    const QString closest = closestForm(document, endpoint);
    const bool isAddress = closest.startsWith("The address"_L1);
    throw Rejection(400, closest.isEmpty() ? *objection
                         : isAddress       ? closest + u". "_s + *objection
                                           : *objection + u". "_s + closest);
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
        explainer = std::make_unique<Explainer>(following->rules, *database);
    });
}

Service::~Service()
{
    worker.run([this] {
        explainer.reset();
        desk.reset();
        database.reset();
    });
}

void Service::setRules(const Rules& newRules)
{
    const auto next = std::make_shared<Following>(newRules);
    worker.run([&] {
        desk = std::make_unique<CheckDesk>(next->rules, *database, habits);
        explainer = std::make_unique<Explainer>(next->rules, *database);
    });
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
        requireForm(document, endpoint);
    }
    QString whyNone;
    if (const std::optional<Answer> canned =
            now.answers.take(endpoint, about.cardNumber, whyNone)) {
        return *canned;
    }
    if (now.rules->refusesUnmatched) {
        const QString closest =
            now.rules->isStrict ? now.answers.closest(endpoint, about.cardNumber) : QString();
        throw Rejection(400, closest.isEmpty() ? whyNone : closest + u". "_s + whyNone);
    }
    return now.rules->isStrict ? handleStrictly(endpoint, document)
                               : handleKnown(endpoint, document);
}

/// As handleKnown, with what a refusal is for as exactly as can be told.
Answer Service::handleStrictly(const QString& endpoint, const Element& document)
{
    try {
        const Answer answer = handleKnown(endpoint, document);
        if (endpoint == endpoints::paymentTry) {
            worker.run([&] { explainer->noteTry(document); });
        }
        return answer;
    } catch (const Rejection& rejection) {
        if (rejection.status == 409) {
            throw;
        }
        const QString cause = worker.run([&] { return explainer->causeOf(endpoint, document); });
        if (cause.isEmpty()) {
            throw;
        }
        throw Rejection(rejection.status, cause + u". "_s + rejection.reason);
    }
}

Answer Service::handleKnown(const QString& endpoint, const Element& document)
{
    const Check check = readCheck(document);
    if (endpoint == endpoints::precheck) {
        return accepted(worker.run([&] { return desk->precheck(check, document); }));
    }
    if (endpoint == endpoints::paymentTry) {
        worker.run([&] { desk->paymentTry(check, document); });
    } else {
        worker.run([&] { desk->confirm(check, document); });
    }
    return accepted(acknowledgement(check));
}

} // namespace simulator
