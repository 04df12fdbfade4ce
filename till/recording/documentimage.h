// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QDateTime>
#include <QMap>
#include <QString>
#include <QVariant>

#include <string>

namespace till {

/// Values one after another as bytes, each behind its kind. Two images are equal exactly when every
/// value would be recorded the same.
class DocumentImage
{
public:
    void add(const QString& name, bool value);
    void add(const QString& name, int value);
    void add(const QString& name, qint64 value);
    void add(const QString& name, double value);
    void add(const QString& name, const QString& value);
    void add(const QString& name, const QDateTime& value);
    void add(const QString& name, const QVariant& value);
    void add(const QString& name, const QMap<int, double>& value);

    const std::string& bytes() const { return all; }
    void clear() { all.clear(); }

private:
    template <typename Value>
    void append(Value value);

    std::string all;
};

} // namespace till
