// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include <QObject>

#include <unistd.h>

namespace {

/// Runs while the library is loaded, and never ends.
[[gnu::constructor]] void hang()
{
    for (;;) {
        ::pause();
    }
}

} // namespace

/// A loyalty plug-in by its metadata, whose library does not come to the end of its loading.
class HangsOnLoad : public QObject
{
    Q_OBJECT
    Q_PLUGIN_METADATA(IID "Orva")
};

#include "hangsonload.moc"
