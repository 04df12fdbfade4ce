// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/doctor/pluginvisit.h"

#include "host/http/refusallistener.h"
#include "host/loyalty/basicloyaltysystem.h"
#include "host/services/currenttime.h"
#include "host/services/session.h"
#include "till/checks/check.h"
#include "till/desk/serverswords.h"
#include "till/doctor/errand.h"
#include "till/doctor/witness.h"
#include "till/reason.h"
#include "till/text.h"

#include <QFileInfo>
#include <QRegularExpression>

#include <clocale>
#include <link.h>

using namespace Qt::StringLiterals;

namespace till::doctor {
namespace {

/// The loader's words in English while it lives: the name of a missing library stands in them.
class EnglishMessages
{
public:
    EnglishMessages()
        : english(newlocale(LC_MESSAGES_MASK, "C", duplocale(LC_GLOBAL_LOCALE))),
          former(uselocale(english))
    {}
    ~EnglishMessages()
    {
        uselocale(former);
        freelocale(english);
    }
    EnglishMessages(const EnglishMessages&) = delete;
    EnglishMessages& operator=(const EnglishMessages&) = delete;

private:
    const locale_t english;
    const locale_t former;
};

int findLog4Qt(dl_phdr_info* library, size_t, void* found)
{
    const QString file = QFile::decodeName(library->dlpi_name);
    if (!QFileInfo(file).fileName().contains("log4qt"_L1, Qt::CaseInsensitive)) {
        return 0;
    }
    *static_cast<QString*>(found) = file;
    return 1;
}

PluginLoading load(QPluginLoader& loader)
{
    if (const QString complaint = PluginHost::contractComplaint(loader.fileName());
        !complaint.isEmpty()) {
        return {.loaded = false, .error = complaint, .missingLibrary = {}};
    }
    static const QRegularExpression missing(
        u"([^\\s(:]+): cannot open shared object file: No such file"_s);
    const EnglishMessages messages;
    PluginLoading result;
    // all symbols now: a missing function would otherwise end the till in the middle of a sale
    loader.setLoadHints(QLibrary::ResolveAllSymbolsHint | QLibrary::PreventUnloadHint);
    result.loaded = loader.load();
    if (!result.loaded) {
        result.error = loader.errorString();
        result.missingLibrary = missing.match(result.error).captured(1);
    }
    return result;
}

PluginMeeting meet(const QString& file, std::unique_ptr<PluginHost>& host)
{
    PluginMeeting result;
    try {
        host = std::make_unique<PluginHost>(file);
    } catch (const PluginFailure& failure) {
        result.failedAt = failure.step();
        result.refusal = failure.text();
    } catch (const std::exception& error) {
        result.failedAt = PluginFailure::Step::Initialisation;
        result.refusal = reasonOf(error);
    }
    dl_iterate_phdr(findLog4Qt, &result.log4QtFile);
    return result;
}

Check probingCheck(const QString& card, int systemType)
{
    Line line;
    line.position = 1;
    line.code = u"0"_s;
    line.name = Text::tr("Check of the set-up");
    line.priceKopecks = 1'00;
    line.thousandths = 1000;
    line.sumKopecks = 1'00;
    Check check = Check::create(EDocumentType::Sale, 0, {line});
    check.document->addCardRecord(Check::newCardRecord(card, systemType));
    return check;
}

/// Asks what a check would be granted; nobody closes it, so nothing is booked.
Exchange ask(BasicLoyaltySystem& system, const QString& card, int limitSeconds)
{
    Witness witness(limitSeconds);
    const poshost::RefusalListener heard;
    const Check check = probingCheck(card, system.getLoyaltySystemType());
    Exchange exchange;
    Singleton<Session>::instance->setDocument(check.document);
    system.setDocument(check.document);
    try {
        system.clearLastErrorString();
        exchange.accepted = system.request(check.document);
        exchange.reason = said(system.getLastErrorString());
    } catch (const std::exception& error) {
        exchange.reason = reasonOf(error);
    }
    system.setDocument({});
    Singleton<Session>::instance->setDocument({});
    exchange.answeredAt = MockFactory<CurrentTime>::create()->currentDateTime();
    exchange.requests = witness.requests();
    exchange.milliseconds = witness.milliseconds();
    exchange.status = witness.getHttpStatusCode();
    // with an answer that came whole, the error is at most its status
    exchange.whole =
        exchange.status != 0 && (witness.getError() == 0 || witness.getError() == exchange.status);
    exchange.transport = said(witness.getErrorText());
    exchange.words = serverswords::lineOf(heard, card);
    exchange.date = witness.getResponseHeader(u"Date"_s);
    return exchange;
}

} // namespace

struct PluginVisit::Course
{
    Course(const QString& pluginFile, const QString& cardNumber, int limit)
        : file(pluginFile), card(cardNumber), limitSeconds(limit)
    {}

    void run();

    const QString file;
    const QString card;
    const int limitSeconds;
    std::promise<PluginMetadata> metadata;
    std::promise<PluginLoading> loading;
    std::promise<PluginMeeting> meeting;
    std::promise<bool> decision;
    std::promise<Exchange> exchange;
    std::promise<bool> end;
    std::future<PluginMetadata> metadataKnown = metadata.get_future();
    std::future<PluginLoading> loadingKnown = loading.get_future();
    std::future<PluginMeeting> meetingKnown = meeting.get_future();
    std::future<bool> decisionKnown = decision.get_future();
    std::future<Exchange> exchangeKnown = exchange.get_future();
    std::future<bool> endKnown = end.get_future();
};

void PluginVisit::Course::run()
{
    QPluginLoader loader(file);
    const PluginMetadata described{loader.metaData(), loader.errorString()};
    metadata.set_value(described);
    std::unique_ptr<PluginHost> host;
    // nothing of a library that is no loyalty plug-in may run here
    if (described.metadata.value("IID"_L1).toString() == PluginHost::requiredIid()) {
        const PluginLoading loaded = load(loader);
        loading.set_value(loaded);
        if (loaded.loaded) {
            meeting.set_value(meet(file, host));
        }
    }
    if (decisionKnown.get() && host) {
        exchange.set_value(ask(host->loyaltySystem(), card, limitSeconds));
    }
    host.reset();
    end.set_value(true);
}

PluginVisit::PluginVisit(const QString& file, const QString& card, int limitSeconds)
    : course(std::make_shared<Course>(file, card, limitSeconds))
{
    std::thread([own = course] { own->run(); }).detach();
}

PluginVisit::~PluginVisit()
{
    if (!decided) {
        decide(false);
    }
}

template <typename T>
std::optional<T> PluginVisit::step(std::future<T>& result, const QDeadlineTimer& deadline)
{
    std::optional<T> value = awaited(result, deadline);
    late = late || !value;
    return value;
}

std::optional<PluginMetadata> PluginVisit::metadata(const QDeadlineTimer& deadline)
{
    return step(course->metadataKnown, deadline);
}

std::optional<PluginLoading> PluginVisit::loading(const QDeadlineTimer& deadline)
{
    return step(course->loadingKnown, deadline);
}

std::optional<PluginMeeting> PluginVisit::meeting(const QDeadlineTimer& deadline)
{
    return step(course->meetingKnown, deadline);
}

void PluginVisit::decide(bool ask)
{
    decided = true;
    course->decision.set_value(ask);
}

std::optional<Exchange> PluginVisit::exchange(const QDeadlineTimer& deadline)
{
    return step(course->exchangeKnown, deadline);
}

bool PluginVisit::hasEnded(const QDeadlineTimer& deadline)
{
    return awaited(course->endKnown, deadline).has_value();
}

} // namespace till::doctor
