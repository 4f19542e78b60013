#pragma once

#include <QString>

class QWidget;

// Prints plain text: lines wrapped to the page in a fixed-width font, pages
// numbered. Through the system's print dialog when the system has a
// printer, or straight into a PDF file.
class Printer
{
public:
    enum class Result { Printed, Cancelled, Failed };

    virtual ~Printer() = default;

    // Whether the system knows a printer to print on.
    virtual bool hasPrinter() const = 0;
    // The print dialog, on the default printer; the document ends when the
    // dialog is confirmed.
    virtual Result print(const QString &text, const QString &title) = 0;
    // The file is written whole or not at all.
    virtual Result printToPdf(const QString &text, const QString &title, const QString &file) = 0;
};

class QtPrinter : public Printer
{
public:
    explicit QtPrinter(QWidget *parent = nullptr) : m_parent(parent) {}

    bool hasPrinter() const override;
    Result print(const QString &text, const QString &title) override;
    Result printToPdf(const QString &text, const QString &title, const QString &file) override;

private:
    QWidget *m_parent;
};
