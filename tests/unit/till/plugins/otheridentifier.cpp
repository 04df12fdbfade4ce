// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include <QObject>

/// A Qt plug-in for something else.
class OtherIdentifier : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "org.example.Printer")
};

#include "otheridentifier.moc"
