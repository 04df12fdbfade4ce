// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "till/init/trial.h"

#include "host/http/connectionprobe.h"
#include "host/http/serveraddress.h"
#include "till/desk/installedplugin.h"
#include "till/doctor/doctor.h"
#include "till/init/settings.h"
#include "till/options.h"
#include "till/reason.h"
#include "till/text.h"

#include <QLoggingCategory>
#include <QUrl>

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace till::init::trial {
namespace {

constexpr int roadMilliseconds = 5000;

/// A file that stands in no folder: secrets that may be wrong are not put on a disk.
class UnseenFile
{
public:
    explicit UnseenFile(const QByteArray& content)
        : descriptor(::memfd_create("settings", MFD_CLOEXEC))
    {
        ::fchmod(descriptor, S_IRUSR | S_IWUSR);
        written = ::write(descriptor, content.constData(), size_t(content.size())) ==
                  ssize_t(content.size());
    }
    ~UnseenFile() { ::close(descriptor); }
    UnseenFile(const UnseenFile&) = delete;
    UnseenFile& operator=(const UnseenFile&) = delete;

    bool isWritten() const { return written; }
    QString path() const { return u"/proc/self/fd/%1"_s.arg(descriptor); }

private:
    const int descriptor;
    bool written = false;
};

/// What concerns neither the answers nor what they are tried with is the doctor's business later.
bool concernsAnswers(const QString& id, const Settings& settings)
{
    return id.startsWith(u"config.%1."_s.arg(settings.serverTable)) ||
           id.startsWith("address."_L1) || id.startsWith("road."_L1) || id.startsWith("tls."_L1) ||
           id.startsWith("plugin."_L1) || id == "server.answer"_L1 ||
           id == "server.credentials"_L1 || id == "server.endpoint"_L1;
}

} // namespace

QString ofAddress(const QString& address)
{
    const poshost::Message complaint = poshost::serveraddress::complaintAbout(address);
    if (!complaint.isEmpty()) {
        return Text::tr("This address cannot be used: %1.").arg(said(complaint));
    }
    const auto probe = poshost::ConnectionProbe::of(QUrl(address), roadMilliseconds);
    if (probe.trouble == poshost::ConnectionProbe::Trouble::None) {
        return {};
    }
    return Text::tr("The server cannot be reached: %1. With --offline nothing is tried.")
        .arg(said(probe.text));
}

Answer ofAll(const Settings& settings, const Options& options)
{
    Answer answer;
    doctor::Subject subject;
    subject.plugin = options.plugin.isEmpty() ? installedPlugin() : options.plugin;
    const UnseenFile file(toToml(entriesOf(settings), Secrets::Inside));
    if (!file.isWritten()) {
        answer.isDoubtful = true;
        return answer;
    }
    subject.configFile = file.path();
    doctor::Doctor doctor(subject);
    if (!options.verbose) {
        QLoggingCategory::setFilterRules(u"orva=false\nposhost.*=false"_s);
    }
    const doctor::Report report = doctor.examine();
    answer.leftBehind = doctor.leftSomethingBehind();
    for (const doctor::Report::Row& row : report.rows()) {
        if (row.finding.mark == doctor::Mark::Fails && concernsAnswers(row.id, settings)) {
            answer.wrong = u"%1: %2."_s.arg(row.title, row.finding.text);
            break;
        }
    }
    return answer;
}

} // namespace till::init::trial
