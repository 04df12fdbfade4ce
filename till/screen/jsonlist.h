// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QJsonObject>
#include <QString>

#include <functional>

namespace till {

/// Writes an array of JSON objects one by one, as QJsonDocument would write it at once: however
/// many there are, they take no memory.
class JsonList
{
public:
    using Write = std::function<void(const QString& part)>;

    /// Begins the array.
    explicit JsonList(Write into);
    void add(const QJsonObject& object);
    /// Ends it. To be called once.
    void end();

private:
    Write write;
    bool isFirst = true;
};

} // namespace till
