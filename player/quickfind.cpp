#include "quickfind.h"

#include <algorithm>
#include <numeric>

namespace {

bool isAscii(const QString &text)
{
    return std::all_of(text.cbegin(), text.cend(), [](QChar c) { return c.unicode() < 0x80; });
}

// Letters that carry their mark inside them, so decomposing leaves them whole.
QStringView plainLetters(char16_t c)
{
    switch (c) {
    case u'Ø':
    case u'ø':
        return u"O";
    case u'Ł':
    case u'ł':
        return u"L";
    case u'Đ':
    case u'đ':
        return u"D";
    case u'Ħ':
    case u'ħ':
        return u"H";
    case u'Æ':
    case u'æ':
        return u"AE";
    case u'Œ':
    case u'œ':
        return u"OE";
    case u'Þ':
    case u'þ':
        return u"TH";
    default:
        return {};
    }
}

} // namespace

QString QuickFind::fold(const QString &text)
{
    if (isAscii(text))
        return text.toUpper();
    const QString decomposed = text.normalized(QString::NormalizationForm_KD);
    QString out;
    out.reserve(decomposed.size());
    for (const QChar c : decomposed) {
        const QChar::Category category = c.category();
        if (category == QChar::Mark_NonSpacing || category == QChar::Mark_SpacingCombining ||
            category == QChar::Mark_Enclosing)
            continue;
        const QStringView plain = plainLetters(c.unicode());
        if (plain.isEmpty())
            out += c;
        else
            out += plain;
    }
    return out.toUpper();
}

QuickFind::QuickFind(const QStringList &names)
{
    QStringList keys;
    keys.reserve(names.size());
    for (const QString &name : names)
        keys << fold(name);
    QList<int> order(names.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(),
                     [&keys](int a, int b) { return keys[a] < keys[b]; });
    m_sorted.reserve(names.size());
    m_keys.reserve(names.size());
    m_entry = order;
    for (const int i : order) {
        m_sorted << names[i];
        m_keys << keys[i];
    }
}

int QuickFind::FindMatch(const QString &text) const
{
    if (text.isEmpty() || m_keys.isEmpty())
        return -1;
    const QString wanted = fold(text);
    // The keys are sorted, so their starts are too: the first start not below
    // the text is found by halving.
    const auto first =
        std::partition_point(m_keys.cbegin(), m_keys.cend(), [&](const QString &key) {
            return QStringView(key).left(wanted.size()).compare(wanted) < 0;
        });
    if (first == m_keys.cend())
        return int(m_keys.size() - 1);
    return int(first - m_keys.cbegin());
}

QList<int> QuickFind::FindAny(const QString &text) const
{
    const QString wanted = fold(text);
    QList<int> rows;
    for (qsizetype row = 0; row < m_keys.size(); ++row) {
        if (!m_sorted[row].isEmpty() && m_keys[row].contains(wanted))
            rows << int(row);
    }
    return rows;
}
