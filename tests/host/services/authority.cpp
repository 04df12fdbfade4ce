// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "authority.h"

#include <QFile>
#include <QProcess>
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
    openssl({u"x509"_s, u"-req"_s, u"-in"_s, wish, u"-CA"_s, file(), u"-CAkey"_s, path(u".key"_s),
             u"-CAcreateserial"_s, u"-days"_s, QString::number(days), u"-extfile"_s, names,
             u"-out"_s, made.file});
    return made;
}
