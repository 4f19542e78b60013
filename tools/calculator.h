#pragma once

#include "skin/skinpart.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <optional>

class Dialogs;
class SkinSurface;

// A number as the calculator shows it: the shortest digits that read back as
// the same 64-bit float, written plainly unless its exponent is below -4 or
// reaches 15 (then as 1e+16). Minus zero shows as 0.
QString calcNumber(double value);

// The calculator mode: four functions applied left to right as keyed, memory,
// percent, square root, reciprocal and conversions from ".ccf" files. The
// display is label 23: the working number is always read back from its
// text. The conversions are list 5, the one chosen is named on label 27.
class Calculator : public SkinPart
{
public:
    static constexpr int kDisplayLabel = 23;
    static constexpr int kConversionLabel = 27;
    static constexpr int kConversionList = 5;
    static constexpr qsizetype kMaxEntry = 15;

    // The settings it reads and writes; they outlive the part.
    struct Options
    {
        QString &CvtFile;
    };
    struct Services
    {
        SkinSurface &skin;
        Dialogs &dialogs;
        QString programFolder; // relative conversion files are found here
    };

    Calculator(Options options, Services services);
    ~Calculator() override;

    // SkinPart: commands 40-69.
    QStringList modes() const override { return {QStringLiteral("CALCULATOR")}; }
    void DoIt(qint16 cmd) override;
    // Loads the conversion file of the last run.
    void started() override;
    std::optional<qint16> keyCommand(char32_t typed) const override;

    // d is "0"-"9" or ".".
    void AddDigit(const QString &d);
    // 0-4 "+-x/=", 5 change sign, 6 percent, 7 square root, 8 reciprocal,
    // 9 backspace, 10 all clear, 11 clear entry, 12-15 memory clear, store,
    // recall and add, 16 convert, 17 convert back; other codes do nothing.
    void CalcKey(int k);
    // Drops one leading blank and shows the text.
    void SetCalc(const QString &text);
    // The conversion chosen in the list.
    void CvtList_Click();
    // An empty path asks for a file; a relative one is in the program folder.
    // The lines are added to the list, which is not cleared.
    void LoadCvtFile(const QString &path);
    // A key text as one character: "\065" is "A", other 4-character texts
    // give "" (such a key is ignored), any other text its first character.
    static QString CvtKey(const QString &key);

    QString display() const;
    qint16 cvtIndex() const { return m_cvtIndex; }
    const QStringList &conversions() const { return m_conversions; }

private:
    double value() const;
    // Shows a result; nothing changes when it is no finite number, as the
    // square root of -1 or an overflow.
    void show(double number);
    void convert(bool reverse);
    void connectList();

    Options m_options;
    Services m_svc;
    double m_acc = 0;
    double m_mem = 0;
    QString m_pendingOp;
    QString m_lastOp;
    qint16 m_cvtIndex = 0;
    QStringList m_conversions; // what list 5 holds
    QMetaObject::Connection m_listClicks;
    int m_fileFilter = 0;
};
