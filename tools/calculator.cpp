#include "calculator.h"

#include "tools/conversionfile.h"

#include "platform/dialogs.h"
#include "platform/readfile.h"
#include "platform/text.h"
#include "skin/skinlistarea.h"
#include "skin/skinsurface.h"

#include <QDir>
#include <QFileInfo>

#include <charconv>
#include <cmath>

QString calcNumber(double value)
{
    if (value == 0)
        return QStringLiteral("0");
    char buffer[64];
    const auto scientific =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::scientific);
    const std::string_view sci(buffer, size_t(scientific.ptr - buffer));
    int exponent = 0;
    const size_t e = sci.find('e');
    if (e != std::string_view::npos)
        std::from_chars(sci.data() + e + (sci[e + 1] == '+' ? 2 : 1), sci.data() + sci.size(),
                        exponent);
    // Fifteen digits is what the entry takes; past that a plain number would
    // only be a row of zeros the user cannot check.
    if (exponent < -4 || exponent >= 15)
        return QString::fromLatin1(sci.data(), qsizetype(sci.size()));
    const auto fixed =
        std::to_chars(buffer, buffer + sizeof buffer, value, std::chars_format::fixed);
    return QString::fromLatin1(buffer, qsizetype(fixed.ptr - buffer));
}

Calculator::Calculator(Options options, Services services)
    : m_options(options), m_svc(std::move(services))
{
}

// The list is the skin's and outlives us.
Calculator::~Calculator()
{
    QObject::disconnect(m_listClicks);
}

void Calculator::DoIt(qint16 cmd)
{
    if (cmd >= 40 && cmd <= 49)
        AddDigit(QString(QChar(cmd + 8)));
    else if (cmd == 50)
        AddDigit(QStringLiteral("."));
    else if (cmd >= 51 && cmd < 69)
        CalcKey(cmd - 51);
    else if (cmd == 69)
        LoadCvtFile(QString());
}

void Calculator::started()
{
    connectList();
    if (display().isEmpty())
        SetCalc(QStringLiteral("0"));
    // An empty name would ask for a file before the user has done anything.
    if (!m_options.CvtFile.isEmpty())
        LoadCvtFile(m_options.CvtFile);
}

std::optional<qint16> Calculator::keyCommand(char32_t typed) const
{
    // Written as key texts, the way skins name keys no keyboard label shows.
    static const struct
    {
        const char *key;
        qint16 command;
    } keys[] = {
        {"\\013", 55}, // Enter: "="
        {"\\008", 60}, // Backspace
        {"\\027", 61}, // Escape: all clear
        {"\\127", 62}, // Delete: clear entry
        {"0", 40},     {"1", 41}, {"2", 42}, {"3", 43}, {"4", 44}, {"5", 45}, {"6", 46},
        {"7", 47},     {"8", 48}, {"9", 49}, {".", 50}, {",", 50}, {"+", 51}, {"-", 52},
        {"*", 53},     {"x", 53}, {"X", 53}, {"/", 54}, {"=", 55}, {"%", 57},
    };
    for (const auto &k : keys) {
        const QString c = CvtKey(QString::fromLatin1(k.key));
        if (!c.isEmpty() && c.at(0).unicode() == typed)
            return k.command;
    }
    return std::nullopt;
}

QString Calculator::display() const
{
    return m_svc.skin.label(kDisplayLabel);
}

double Calculator::value() const
{
    return leadingNumber(display());
}

void Calculator::SetCalc(const QString &text)
{
    m_svc.skin.setLabel(kDisplayLabel, text.startsWith(QLatin1Char(' ')) ? text.mid(1) : text);
}

void Calculator::show(double number)
{
    if (std::isfinite(number))
        SetCalc(calcNumber(number));
}

void Calculator::AddDigit(const QString &d)
{
    QString shown = display();
    if (!m_lastOp.isEmpty()) {
        shown.clear();
        m_lastOp.clear();
    }
    // Fifteen characters, sign and point included: what the display was made for.
    if (shown.size() < kMaxEntry) {
        if (d == QLatin1String("0")) {
            if (shown != QLatin1String("0"))
                shown += d;
        } else if (d == QLatin1String(".")) {
            if (shown.isEmpty())
                shown = QStringLiteral("0.");
            else if (!shown.contains(QLatin1Char('.')))
                shown += d;
        } else if (d.size() == 1 && d[0] >= QLatin1Char('1') && d[0] <= QLatin1Char('9')) {
            if (shown == QLatin1String("0"))
                shown = d;
            else
                shown += d;
        }
    }
    SetCalc(shown);
}

// A step that fails (the root of a negative number, an overflow) changes
// nothing and keeps the display, so the user can go on from what is shown.
void Calculator::CalcKey(int k)
{
    const QString shown = display();
    const double v = leadingNumber(shown);
    switch (k) {
    case 0:
    case 1:
    case 2:
    case 3:
    case 4: {
        double acc = m_acc;
        if (m_pendingOp == QLatin1String("+"))
            acc += v;
        else if (m_pendingOp == QLatin1String("-"))
            acc -= v;
        else if (m_pendingOp == QLatin1String("x"))
            acc *= v;
        else if (m_pendingOp == QLatin1String("/"))
            acc = v != 0 ? acc / v : acc; // dividing by zero is silently ignored
        else
            acc = v;
        if (!std::isfinite(acc))
            return;
        m_acc = acc;
        m_pendingOp = m_lastOp = QStringLiteral("+-x/=").mid(k, 1);
        show(m_acc);
        return;
    }
    case 5: {
        // "0" loses its only character and leaves the display empty: kept so.
        QString changed = shown.startsWith(QLatin1Char(' ')) ? shown.mid(1) : shown;
        if (v > 0)
            changed.prepend(QLatin1Char('-'));
        else
            changed.remove(0, 1);
        SetCalc(changed);
        return;
    }
    case 6: {
        const double p = v / 100 * m_acc;
        double x = v;
        if (m_pendingOp == QLatin1String("+"))
            x = m_acc + p;
        else if (m_pendingOp == QLatin1String("-"))
            x = m_acc - p;
        else if (m_pendingOp == QLatin1String("x"))
            x = p * m_acc;
        else if (m_pendingOp == QLatin1String("/"))
            x = p != 0 ? m_acc / p : 0;
        show(x);
        return;
    }
    case 7:
        show(std::sqrt(v));
        return;
    case 8:
        if (v != 0)
            show(1 / v);
        return;
    case 9: {
        QString shorter = shown;
        shorter.chop(1);
        if (shorter == QLatin1String("0"))
            shorter.clear();
        SetCalc(shorter);
        return;
    }
    case 10:
        SetCalc(QStringLiteral("0"));
        m_pendingOp.clear();
        m_acc = 0;
        m_lastOp.clear();
        return;
    case 11:
        SetCalc(QStringLiteral("0"));
        return;
    case 12:
        m_mem = 0;
        return;
    case 13:
        m_mem = v;
        return;
    case 14:
        show(m_mem);
        return;
    case 15:
        if (std::isfinite(m_mem + v))
            m_mem += v;
        return;
    case 16:
    case 17:
        convert(k == 17);
        return;
    default:
        return;
    }
}

void Calculator::convert(bool reverse)
{
    if (m_cvtIndex < 0 || m_cvtIndex >= m_conversions.size())
        return;
    const Conversion c = parseConversion(m_conversions[m_cvtIndex]);
    if (!c.valid)
        return;
    const double v = value();
    double result = v * c.factor + c.offset;
    if (reverse)
        result = c.factor != 0 ? (v - c.offset) / c.factor : 0;
    show(result);
}

void Calculator::connectList()
{
    SkinListArea *list = m_svc.skin.list(kConversionList);
    if (m_listClicks || !list)
        return;
    // Thousands of conversions are laid out at once instead of row by row.
    list->setUniformItemSizes(true);
    m_listClicks =
        QObject::connect(list, &QListWidget::currentRowChanged, list, [this] { CvtList_Click(); });
}

void Calculator::CvtList_Click()
{
    const SkinListArea *list = m_svc.skin.list(kConversionList);
    if (!list)
        return;
    m_cvtIndex = qint16(qBound(-1, list->currentRow(), 32767));
    if (m_cvtIndex >= 0 && m_cvtIndex < m_conversions.size())
        m_svc.skin.setLabel(kConversionLabel, parseConversion(m_conversions[m_cvtIndex]).name);
}

void Calculator::LoadCvtFile(const QString &path)
{
    QString file = path;
    if (file.isEmpty()) {
        const QString folder =
            m_options.CvtFile.isEmpty()
                ? m_svc.programFolder
                : QFileInfo(QDir(m_svc.programFolder), m_options.CvtFile).absolutePath();
        file = m_svc.dialogs.openFile(QStringLiteral("Select Conversion File"), folder,
                                      QStringLiteral("CalcCvt Files|*.ccf"), m_fileFilter);
        if (file.isEmpty())
            return;
    }
    const QString full =
        QFileInfo(file).isRelative() ? QDir(m_svc.programFolder).filePath(file) : file;
    const FileBytes bytes = readRegularFile(full, kMaxConversionFileBytes);
    if (bytes.fault == FileFault::Missing) {
        qWarning("velto: no conversion file %s", qPrintable(full));
        return;
    }
    if (bytes.fault != FileFault::None) {
        m_svc.dialogs.message(QStringLiteral("The conversion file %1 cannot be read: it is %2.")
                                  .arg(full, QLatin1String(faultText(bytes.fault))));
        return;
    }
    const ConversionFile read = readConversionFile(bytes.bytes, QFileInfo(full).fileName());
    if (read.isText)
        m_options.CvtFile = file;
    if (!read.lines.isEmpty()) {
        connectList();
        m_conversions += read.lines;
        if (SkinListArea *list = m_svc.skin.list(kConversionList)) {
            list->addItems(read.lines);
            // Shows which conversion the arrows use before one is picked.
            if (list->currentRow() < 0 && m_cvtIndex >= 0 && m_cvtIndex < list->count())
                list->setCurrentRow(m_cvtIndex);
        }
    }
    if (!read.messages.isEmpty())
        m_svc.dialogs.message(read.messages.join(QLatin1Char('\r')));
}

QString Calculator::CvtKey(const QString &key)
{
    if (key.size() != 4)
        return key.left(1);
    if (key[0] != QLatin1Char('\\'))
        return {};
    int code = 0;
    for (qsizetype i = 1; i < 4; ++i) {
        if (key[i] < QLatin1Char('0') || key[i] > QLatin1Char('9'))
            return {};
        code = code * 10 + key[i].digitValue();
    }
    // Character codes stop at 255, as on the system the skins come from.
    if (code > 255)
        return {};
    return QString(QChar(code));
}
