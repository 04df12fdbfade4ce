// SPDX-FileCopyrightText: 2026 The Orva developers
// SPDX-License-Identifier: Apache-2.0

#include "simulator/documents/documentform.h"

#include <QHash>
#include <QStringList>

using namespace Qt::StringLiterals;

namespace simulator {
namespace {

using Child = ElementForm::Child;
using Occurs = ElementForm::Occurs;

/// The path as it stands at the beginning of a sentence.
QString subject(const Element& element, const QString& path)
{
    return path.isEmpty() ? element.name : path.chopped(1);
}

std::optional<QString> textObjection(const Element& element, const TextForm& form,
                                     const QString& path)
{
    if (!element.children.empty()) {
        return u"%1 must hold text: it has the element %2"_s.arg(subject(element, path),
                                                                 element.children.front().name);
    }
    const QString text = form.isTrimmed ? element.text.trimmed() : element.text;
    bool isInt = true;
    if (form.isInt) {
        static_cast<void>(text.toInt(&isInt));
    }
    if (isInt && form.whole.match(text).hasMatch()) {
        return std::nullopt;
    }
    const QString shown = text.size() > 40 ? text.left(40) + u"..."_s : text;
    return u"%1 is \"%2\": expected %3"_s.arg(subject(element, path), shown.simplified(),
                                              QLatin1StringView(form.expected));
}

QString namesOf(const std::vector<Child>& children)
{
    QStringList names;
    for (const Child& child : children) {
        names.append(child.name);
    }
    return names.join(u", "_s);
}

/// The row of the form for an element of that name, or null.
const Child* rowOf(const ElementForm& form, const QString& name)
{
    for (const Child& row : form.children) {
        if (row.name == name) {
            return &row;
        }
    }
    return nullptr;
}

/// What is wrong with which elements there are and how many of them.
std::optional<QString> countObjection(const Element& element, const ElementForm& form,
                                      const QString& path)
{
    QHash<const Child*, int> counts;
    for (const Element& child : element.children) {
        const Child* row = rowOf(form, child.name);
        if (row == nullptr) {
            return u"%1%2 is unknown here: known are %3"_s.arg(path, child.name,
                                                               namesOf(form.children));
        }
        ++counts[row];
    }
    for (const Child& row : form.children) {
        const int count = counts.value(&row);
        if (count == 0 && row.occurs == Occurs::Once) {
            return u"%1%2 is missing"_s.arg(path, row.name);
        }
        if (count > 1 && row.occurs != Occurs::AnyTimes) {
            return u"%1%2 is there %3 times: expected once"_s.arg(path, row.name).arg(count);
        }
    }
    if (element.children.empty() && !form.mayBeEmpty) {
        return u"%1 is empty: expected %2"_s.arg(subject(element, path), namesOf(form.children));
    }
    return std::nullopt;
}

/// What is wrong with the order of elements whose names and numbers are right.
std::optional<QString> orderObjection(const Element& element, const ElementForm& form,
                                      const QString& path)
{
    if (form.order == ElementForm::Order::Free) {
        return std::nullopt;
    }
    const Child* reached = nullptr; // rows stand behind each other
    for (const Element& child : element.children) {
        const Child* row = rowOf(form, child.name);
        if (reached != nullptr && row < reached) {
            return u"%1%2 stands behind %3: expected in the order %4"_s.arg(
                path, child.name, reached->name, namesOf(form.children));
        }
        reached = row;
    }
    return std::nullopt;
}

} // namespace

QRegularExpression wholeText(QLatin1StringView pattern)
{
    return QRegularExpression(QRegularExpression::anchoredPattern(pattern),
                              QRegularExpression::DotMatchesEverythingOption);
}

std::optional<QString> formObjection(const Element& element, const ElementForm& form,
                                     const QString& path)
{
    if (!element.dropped.isEmpty()) {
        return u"%1 has %2, which no document has"_s.arg(subject(element, path), element.dropped);
    }
    if (form.text != nullptr) {
        return textObjection(element, *form.text, path);
    }
    if (!element.text.isEmpty()) {
        return u"%1 holds text: expected the elements %2"_s.arg(subject(element, path),
                                                                namesOf(form.children));
    }
    std::optional<QString> objection = countObjection(element, form, path);
    if (!objection) {
        objection = orderObjection(element, form, path);
    }
    QHash<const Child*, int> seen;
    for (auto child = element.children.begin(); !objection && child != element.children.end();
         ++child) {
        const Child* row = rowOf(form, child->name);
        ++seen[row];
        const QString number =
            row->occurs == Occurs::AnyTimes ? u"[%1]"_s.arg(seen.value(row)) : QString();
        objection = formObjection(*child, *row->form, path + child->name + number + u'/');
    }
    return objection;
}

} // namespace simulator
