// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QStringList>

/// Names of encodings that Qt knows by itself or, where it was built with it, through ICU: those
/// that tests of answers try.
namespace tests {

/// In these a declaration can be written in the encoding that it names.
inline QStringList encodingNames()
{
    return QStringLiteral(
               "UTF-8 UTF-16 UTF-16BE UTF-16LE UTF-32 UTF-32BE UTF-32LE ISO-8859-1 US-ASCII "
               "UTF-7 SCSU CESU-8 GB18030 GBK GB2312 EUC-JP EUC-KR EUC-TW Shift_JIS Big5 "
               "Big5-HKSCS KSC_5601 cp1363 TIS-620 ISO-2022-JP ISO-2022-JP-1 ISO-2022-JP-2 "
               "ISO-2022-KR ISO-2022-CN ISO-2022-CN-EXT HZ ISO-8859-2 ISO-8859-3 ISO-8859-4 "
               "ISO-8859-5 ISO-8859-6 ISO-8859-7 ISO-8859-8 ISO-8859-9 ISO-8859-10 ISO-8859-11 "
               "ISO-8859-13 ISO-8859-14 ISO-8859-15 windows-874 windows-1250 windows-1251 "
               "windows-1252 windows-1253 windows-1254 windows-1255 windows-1256 windows-1257 "
               "windows-1258 cp1251 cp1252 KOI8-R KOI8-U IBM437 IBM737 IBM775 IBM850 cp851 IBM852 "
               "IBM855 IBM857 IBM00858 IBM860 IBM861 IBM862 IBM863 IBM864 IBM865 IBM866 cp866 "
               "IBM868 IBM869 ibm-1124 ibm-1125 ibm-1129 ibm-1131 ibm-1133 macintosh x-mac-greek "
               "x-mac-cyrillic x-mac-centraleurroman x-mac-turkish hp-roman8 LMBCS-1")
        .split(u' ');
}

/// In these the declaration is told by ASCII bytes, and what follows by others.
inline QStringList ebcdicNames()
{
    return QStringLiteral("ibm-37 IBM037 cp037 IBM273 IBM424 IBM500 IBM871 IBM1026 IBM1047 "
                          "ibm-1025 ibm-1140 ibm-1154 ebcdic-cp-us")
        .split(u' ');
}

} // namespace tests
