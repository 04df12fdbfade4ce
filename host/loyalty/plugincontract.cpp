// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "host/loyalty/plugincontract.h"

#include <QByteArrayView>
#include <QFile>

#include <cstring>
#include <link.h>

namespace poshost::plugincontract {
namespace {

using Header = ElfW(Ehdr);
using Segment = ElfW(Phdr);
using Entry = ElfW(Dyn);

/// A library's file. Every place in it comes from the file itself, so each is looked at before it
/// is read.
class LibraryFile
{
public:
    explicit LibraryFile(QByteArrayView content) : bytes(content) {}

    /// The names of the libraries that it asks for.
    QList<QByteArrayView> needed() const
    {
        QList<QByteArrayView> names;
        const auto header = at<Header>(0);
        if (!header || !isForThisMachine(*header)) {
            return names;
        }
        const auto dynamic = segment(*header, PT_DYNAMIC, {});
        const auto texts = textsOf(*header, dynamic);
        for (const quint64 place : values(dynamic, DT_NEEDED)) {
            names.append(text(texts, place));
        }
        return names;
    }

private:
    template <typename Part>
    std::optional<Part> at(quint64 place) const
    {
        const auto size = static_cast<quint64>(bytes.size());
        if (place > size || size - place < sizeof(Part)) {
            return std::nullopt;
        }
        Part part{};
        std::memcpy(&part, bytes.data() + place, sizeof(Part));
        return part;
    }

    static bool isForThisMachine(const Header& header)
    {
        constexpr unsigned char bits = sizeof(void*) == 8 ? ELFCLASS64 : ELFCLASS32;
        return std::memcmp(header.e_ident, ELFMAG, SELFMAG) == 0 &&
               header.e_ident[EI_CLASS] == bits && header.e_phentsize == sizeof(Segment);
    }

    /// The first segment of a type, of which memory is a part if an address is given.
    std::optional<Segment> segment(const Header& header, quint32 type,
                                   std::optional<quint64> address) const
    {
        for (quint64 i = 0; i < header.e_phnum; ++i) {
            const auto found = at<Segment>(header.e_phoff + i * sizeof(Segment));
            if (found && found->p_type == type &&
                (!address ||
                 (*address >= found->p_vaddr && *address - found->p_vaddr < found->p_filesz))) {
                return found;
            }
        }
        return std::nullopt;
    }

    /// What the entries of a kind say.
    QList<quint64> values(const std::optional<Segment>& dynamic, qint64 kind) const
    {
        QList<quint64> found;
        const quint64 count = dynamic ? dynamic->p_filesz / sizeof(Entry) : 0;
        for (quint64 i = 0; i < count; ++i) {
            const auto entry = at<Entry>(dynamic->p_offset + i * sizeof(Entry));
            if (!entry || entry->d_tag == DT_NULL) {
                break;
            }
            if (entry->d_tag == kind) {
                found.append(entry->d_un.d_val);
            }
        }
        return found;
    }

    /// Where the names stand in the file.
    std::optional<quint64> textsOf(const Header& header,
                                   const std::optional<Segment>& dynamic) const
    {
        const QList<quint64> addresses = values(dynamic, DT_STRTAB);
        const auto loaded =
            addresses.isEmpty() ? std::nullopt : segment(header, PT_LOAD, addresses.constFirst());
        if (!loaded) {
            return std::nullopt;
        }
        return addresses.constFirst() - loaded->p_vaddr + loaded->p_offset;
    }

    QByteArrayView text(std::optional<quint64> texts, quint64 place) const
    {
        const auto size = static_cast<quint64>(bytes.size());
        if (!texts || *texts > size || place >= size - *texts) {
            return {};
        }
        const QByteArrayView rest = bytes.sliced(static_cast<qsizetype>(*texts + place));
        const qsizetype end = rest.indexOf('\0');
        return end < 0 ? QByteArrayView() : rest.first(end);
    }

    QByteArrayView bytes;
};

} // namespace

int version()
{
    return HOST_CONTRACT_VERSION;
}

std::optional<int> versionNeededBy(const QString& pluginFile)
{
    QFile file(pluginFile);
    if (!file.open(QIODevice::ReadOnly)) {
        return std::nullopt;
    }
    const auto* const content = reinterpret_cast<const char*>(file.map(0, file.size()));
    if (content == nullptr) {
        return std::nullopt;
    }
    constexpr QByteArrayView library = "libposhost.so.";
    const QList<QByteArrayView> names =
        LibraryFile(QByteArrayView(content, static_cast<qsizetype>(file.size()))).needed();
    for (const QByteArrayView name : names) {
        bool isNumber = false;
        const int number =
            name.startsWith(library) ? name.sliced(library.size()).toInt(&isNumber) : 0;
        if (isNumber) {
            return number;
        }
    }
    return std::nullopt;
}

} // namespace poshost::plugincontract
