// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/service.h"

#include "simulator/checkdesk.h"
#include "simulator/checkreader.h"
#include "simulator/credentials.h"
#include "simulator/names.h"
#include "simulator/rejection.h"
#include "simulator/xmlreader.h"
#include "simulator/xmlwriter.h"

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

constexpr char precheckPath[] = "/api/1.x/precheck";
constexpr char paymentTryPath[] = "/api/1.x/paymenttry";
constexpr char checkConfirmPath[] = "/api/1.x/checkconfirm";

bool isKnownPath(const QByteArray& path)
{
    return path == precheckPath || path == paymentTryPath || path == checkConfirmPath;
}

Answer accepted(const Element& document)
{
    Answer answer;
    answer.contentType = "application/xml; charset=utf-8";
    answer.body = writeXml(document);
    return answer;
}

/// The answer to a payment try or a confirmation: the check's identifier.
Element acknowledgement(const Check& check)
{
    Element document{QString(names::rawCheck)};
    document.append(names::id, check.id);
    return document;
}

} // namespace

Service::Service(const Rules& serviceRules, const QString& databasePath)
    : rules(std::make_shared<const Rules>(serviceRules)),
      expectedAuthorization(authorizationValue(rules->user, rules->password, rules->apiKey))
{
    worker.run([&] {
        database = std::make_unique<Database>(databasePath);
        desk = std::make_unique<CheckDesk>(rules, *database);
    });
}

Service::~Service()
{
    worker.run([this] {
        desk.reset();
        database.reset();
    });
}

Answer Service::handle(const Request& request)
{
    if (!isKnownPath(request.path)) {
        return refusal(404, u"There is nothing here: the addresses are %1, %2 and %3"_s.arg(
                                QLatin1StringView(precheckPath), QLatin1StringView(paymentTryPath),
                                QLatin1StringView(checkConfirmPath)));
    }
    if (request.method != "POST") {
        return refusal(405, u"This address takes POST only"_s);
    }
    if (!isAuthorized(request.authorization, expectedAuthorization)) {
        return refusal(401, request.authorization.isEmpty()
                                ? u"The Authorization header is missing"_s
                                : u"The user, the password or the key is wrong"_s);
    }
    Answer about; // what the log needs is known in part before a rejection
    Answer answer;
    try {
        answer = handleCheck(request, about);
    } catch (const Rejection& rejection) {
        answer = refusal(rejection.status, rejection.reason);
    } catch (const std::overflow_error&) {
        answer = refusal(424, u"The amounts of the check are too large"_s);
    } catch (const std::exception& error) {
        answer = refusal(500, QString::fromUtf8(error.what()));
    }
    answer.checkId = about.checkId;
    answer.cardNumber = about.cardNumber;
    return answer;
}

Answer Service::handleCheck(const Request& request, Answer& about)
{
    const Element document = readXml(request.body);
    if (const Element* id = document.child(names::id)) {
        about.checkId = id->text;
    }
    if (const Element* card = document.child(names::cardNumber)) {
        about.cardNumber = card->text;
    }
    const Check check = readCheck(document);
    if (request.path == precheckPath) {
        return accepted(worker.run([&] { return desk->precheck(check, document); }));
    }
    if (request.path == paymentTryPath) {
        worker.run([&] { desk->paymentTry(check, document); });
    } else {
        worker.run([&] { desk->confirm(check, document); });
    }
    return accepted(acknowledgement(check));
}

} // namespace simulator
