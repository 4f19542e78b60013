#include "devicespage.h"

#include "core/settingkeys.h"
#include "platform/serialport.h"
#include "platform/tuner.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QSpinBox>
#include <QVBoxLayout>

DevicesPage::DevicesPage(const Settings &settings, Dialogs &dialogs) : PrefsPage(settings, dialogs)
{
    auto *layout = new QVBoxLayout(this);

    auto *fm = new QGroupBox(QStringLiteral("FM tuner"));
    auto *fform = new QFormLayout(fm);
    QCheckBox *fmOn =
        check(&Settings::FMEnable, QStringLiteral("Use an FM &tuner"),
              QStringLiteral("Velto tunes a radio device in the FM Tuner mode and asks at exit "
                             "whether to mute it"),
              Truth::One);
    fform->addRow(fmOn);
    // The radio devices there are, and whatever the settings name, present or not.
    auto *device = new QComboBox;
    device->setObjectName(settingKey(&Settings::FMDevice));
    device->setEditable(true);
    QStringList devices = radioDevices();
    if (!devices.contains(m_initial.FMDevice))
        devices.prepend(m_initial.FMDevice);
    device->addItems(devices);
    device->setCurrentText(m_initial.FMDevice);
    device->setToolTip(QStringLiteral("The Video4Linux radio device to tune, such as /dev/radio0"));
    bind([device] { return QVariant(device->currentText().trimmed()); },
         [](Settings &s, const QVariant &v) { s.FMDevice = v.toString(); });
    fform->addRow(buddyLabel(QStringLiteral("Radio de&vice:"), device), device);
    auto *linuxNote = new QLabel(QStringLiteral(
        "Card type and I/O port are for the old ISA cards; a Linux radio device needs neither."));
    linuxNote->setWordWrap(true);
    const QStringList cards = {QStringLiteral("Aztech/PB/CompExpress"),
                               QStringLiteral("Aims Labs RadioTrack"),
                               QStringLiteral("Aims Labs RadioTrack II")};
    const QStringList ports[3] = {{QStringLiteral("350h"), QStringLiteral("358h")},
                                  {QStringLiteral("30Ch"), QStringLiteral("20Ch")},
                                  {QStringLiteral("384h"), QStringLiteral("284h")}};
    const int card = m_initial.CardType >= 0 && m_initial.CardType < 3 ? m_initial.CardType : 0;
    QComboBox *cardType =
        choice(&Settings::CardType, cards, card,
               QStringLiteral("The kind of ISA card; kept, but a Linux radio device needs none"));
    fform->addRow(QStringLiteral("Card t&ype:"), cardType);
    QComboBox *cardPort = choice(&Settings::CardPort, ports[card], m_initial.CardPort == 1 ? 1 : 0,
                                 QStringLiteral("The card's I/O port"));
    connect(cardType, &QComboBox::currentIndexChanged, this, [cardPort, ports](int index) {
        if (index < 0 || index > 2)
            return;
        const int port = cardPort->currentIndex();
        for (int i = 0; i < 2; ++i)
            cardPort->setItemText(i, ports[index][i]);
        cardPort->setCurrentIndex(port);
    });
    fform->addRow(QStringLiteral("&I/O port:"), cardPort);
    fform->addRow(linuxNote);
    QSpinBox *preset = number(&Settings::StartPreset, 0, 999,
                              QStringLiteral("The preset tuned when Velto starts"));
    fform->addRow(QStringLiteral("Start p&reset:"), preset);
    auto *freq = new QDoubleSpinBox;
    freq->setObjectName(settingKey(&Settings::StartFreq));
    freq->setRange(87.0, 108.0);
    freq->setDecimals(1);
    freq->setSingleStep(0.1);
    freq->setSuffix(QStringLiteral(" MHz"));
    freq->setValue(qBound(87.0, leadingNumber(m_initial.StartFreq), 108.0));
    freq->setToolTip(QStringLiteral("The frequency tuned when Velto starts"));
    bind([freq] { return QVariant(QString::number(freq->value(), 'f', 1)); },
         [](Settings &s, const QVariant &v) { s.StartFreq = v.toString(); });
    fform->addRow(QStringLiteral("Start fre&quency:"), freq);
    auto enableFm = [fmOn, device, cardType, cardPort, preset, freq] {
        for (QWidget *w : {static_cast<QWidget *>(device), static_cast<QWidget *>(cardType),
                           static_cast<QWidget *>(cardPort), static_cast<QWidget *>(preset),
                           static_cast<QWidget *>(freq)})
            w->setEnabled(fmOn->isChecked());
    };
    connect(fmOn, &QCheckBox::toggled, this, enableFm);
    enableFm();
    layout->addWidget(fm);

    auto *ex = new QGroupBox(QStringLiteral("External display"));
    auto *eform = new QFormLayout(ex);
    QCheckBox *exOn =
        check(&Settings::ExEnable, QStringLiteral("Show the title on an e&xternal display"),
              QStringLiteral("Send what plays to an LED sign or LCD module on a "
                             "serial port"),
              Truth::One);
    eform->addRow(exOn);
    QComboBox *kind = choice(&Settings::ExDev,
                             {QStringLiteral("LED sign"), QStringLiteral("Character LCD module")},
                             m_initial.ExDev == 1 ? 1 : 0, QStringLiteral("The kind of display"));
    eform->addRow(QStringLiteral("Display &model:"), kind);
    QSpinBox *port = number(&Settings::ExPort, 0, 299,
                            QStringLiteral("1 is /dev/ttyS0, 100 /dev/ttyUSB0, 200 /dev/ttyACM0"));
    port->setSpecialValueText(QStringLiteral("none"));
    eform->addRow(QStringLiteral("Serial port &number:"), port);
    QLineEdit *parm = text(&Settings::ExParm,
                           QStringLiteral("Speed, parity, data bits and stop bits, as 9600,N,8,1; "
                                          "a device path may come first: /dev/ttyUSB0,9600,N,8,1"));
    eform->addRow(QStringLiteral("Port &settings:"), parm);
    // What the two fields come to, so a typing slip shows before the sign stays dark.
    auto *where = new QLabel;
    where->setObjectName(QStringLiteral("exWhere"));
    where->setWordWrap(true);
    eform->addRow(where);
    auto showWhere = [port, parm, where] {
        const SerialSettings s = parseSerialSettings(parm->text());
        const QString device = s.device.isEmpty() ? serialDevicePath(port->value()) : s.device;
        if (!s.error.isEmpty())
            where->setText(QStringLiteral("The port settings are not right: ") + s.error + '.');
        else if (device.isEmpty())
            where->setText(QStringLiteral("Choose a port number or put the device path first."));
        else
            where->setText(
                QStringLiteral("Sends to %1 at %2 bits a second.").arg(device).arg(s.line.speed));
    };
    connect(port, &QSpinBox::valueChanged, this, showWhere);
    connect(parm, &QLineEdit::textChanged, this, showWhere);
    showWhere();
    auto enableEx = [exOn, kind, port, parm, where] {
        for (QWidget *w : {static_cast<QWidget *>(kind), static_cast<QWidget *>(port),
                           static_cast<QWidget *>(parm), static_cast<QWidget *>(where)})
            w->setEnabled(exOn->isChecked());
    };
    connect(exOn, &QCheckBox::toggled, this, enableEx);
    enableEx();
    layout->addWidget(ex);
    layout->addStretch();
}
