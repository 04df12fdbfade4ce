// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/xmlwriter.h"

#include <QCryptographicHash>

#include <memory>

namespace simulator {

QByteArray writeXml(const Element& root)
{
    const std::unique_ptr<xmlBuffer, decltype(&xmlBufferFree)> out(xmlBufferCreate(),
                                                                   &xmlBufferFree);
    xmlTreeIndentString = " "; // each thread has its own
    xmlNodeDump(out.get(), root.handle()->doc, root.handle(), 0, 1);
    return QByteArray(reinterpret_cast<const char*>(xmlBufferContent(out.get())),
                      xmlBufferLength(out.get())) +
           '\n';
}

QByteArray xmlDigest(const Element& root)
{
    return QCryptographicHash::hash(writeXml(root), QCryptographicHash::Sha256);
}

} // namespace simulator
