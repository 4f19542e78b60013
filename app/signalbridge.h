#pragma once

#include <QObject>

class QSocketNotifier;

// Turns SIGTERM and SIGINT into a Qt signal on the event loop, so they end the
// program through the same shut-down as closing the window.
class SignalBridge : public QObject
{
    Q_OBJECT
public:
    explicit SignalBridge(QObject *parent = nullptr);
    ~SignalBridge() override;

signals:
    void terminationRequested();

private:
    static void handle(int signo);
    QSocketNotifier *m_notifier = nullptr;
};
