// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include <QObject>

int vanished();

/// A loyalty plug-in by its metadata, which needs a library that is not where libraries are.
class MissingLibrary : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")

public:
    MissingLibrary() : value(vanished()) {}

private:
    [[maybe_unused]] int value;
};

#include "missinglibrary.moc"
