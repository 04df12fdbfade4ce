// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#pragma once

#include <QElapsedTimer>
#include <QString>

namespace till {

class Output;

/// How far a long work has got. On a terminal it is a bar that is drawn anew and gone at the end;
/// elsewhere it is a line for each tenth that is done, so that a log stays short. Nothing when the
/// output is quiet.
class Progress
{
public:
    /// @param work what is going on, such as "Delivering"
    Progress(Output& output, const QString& work) : out(output), title(work) {}
    /// Removes the bar.
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Removes the bar until the next call of show, so that a line can be written in its place.
    void clear();
    /// To be called as often as is handy: it writes only what people can follow.
    void show(qint64 done, qint64 total);

private:
    void draw(qint64 done, qint64 total);
    void tell(qint64 done, qint64 total);

    Output& out;
    QString title;
    QElapsedTimer sinceDrawn; ///< valid while a bar stands there
    qint64 toldTenths = 0;
};

} // namespace till
