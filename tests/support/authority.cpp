// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "authority.h"

#include <QDateTime>
#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <algorithm>
#include <stdexcept>

using namespace Qt::StringLiterals;

namespace {

void openssl(const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(u"openssl"_s, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) {
        throw std::runtime_error("openssl: " + process.readAll().toStdString());
    }
}

QStringList newKey(const QString& file)
{
    return {u"-newkey"_s, u"ec"_s,      u"-pkeyopt"_s, u"ec_paramgen_curve:prime256v1"_s,
            u"-nodes"_s,  u"-keyout"_s, file};
}

void write(const QString& name, const QByteArray& content)
{
    QFile file(name);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size()) {
        throw std::runtime_error("cannot write " + name.toStdString());
    }
}

} // namespace

Authority::Authority(const QString& folder, const QString& name) : prefix(folder + u'/' + name)
{
    openssl(QStringList{u"req"_s, u"-x509"_s} + newKey(path(u".key"_s)) +
            QStringList{u"-out"_s, file(), u"-days"_s, u"2"_s, u"-subj"_s, u"/CN=Test "_s + name});
}

Authority::Certificate Authority::certify(const QString& hostName, int days) const
{
    const QString plainName = QString(hostName).replace(u'*', u"any"_s);
    const Certificate made{path(u'-' + plainName + u".pem"_s), path(u'-' + plainName + u".key"_s)};
    const QString wish = path(u'-' + plainName + u".csr"_s);
    const QString names = path(u'-' + plainName + u".cnf"_s);
    write(names, "subjectAltName=DNS:" + hostName.toUtf8() + "\n");
    openssl(QStringList{u"req"_s} + newKey(made.keyFile) +
            QStringList{u"-out"_s, wish, u"-subj"_s, u"/CN="_s + hostName});
    // the only command of all versions that can make one which has expired
    write(path(u".index"_s), "");
    write(path(u".index.attr"_s), "unique_subject = no\n");
    write(path(u".cnf"_s), "[ca]\ndefault_ca = here\n[here]\nrand_serial = yes\n"
                           "default_md = sha256\npolicy = names\ndatabase = " +
                               path(u".index"_s).toUtf8() +
                               "\nnew_certs_dir = " + QFileInfo(prefix).path().toUtf8() +
                               "\n[names]\ncommonName = supplied\n");
    const auto date = [](const QDateTime& time) { return time.toString(u"yyyyMMddhhmmss'Z'"_s); };
    const QDateTime now = QDateTime::currentDateTimeUtc();
    openssl({u"ca"_s, u"-batch"_s, u"-notext"_s, u"-config"_s, path(u".cnf"_s), u"-cert"_s, file(),
             u"-keyfile"_s, path(u".key"_s), u"-in"_s, wish, u"-extfile"_s, names, u"-startdate"_s,
             date(now.addDays(std::min(days, 0) - 1)), u"-enddate"_s, date(now.addDays(days)),
             u"-out"_s, made.file});
    return made;
}
