// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include <QObject>

extern int missingFromEveryLibrary;

/// A loyalty plug-in by its metadata, which needs a symbol that no library has.
class MissingSymbol : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")

public:
    MissingSymbol() : address(&missingFromEveryLibrary) {}

private:
    [[maybe_unused]] int* address;
};

#include "missingsymbol.moc"
