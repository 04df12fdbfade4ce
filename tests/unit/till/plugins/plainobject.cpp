// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include <QObject>

/// A loyalty plug-in by its metadata, whose object is nothing but an object.
class PlainObject : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")
};

#include "plainobject.moc"
