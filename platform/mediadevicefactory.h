#pragma once

#include "platform/mediadevice.h"

#include <QObject>
#include <QString>
#include <QStringList>

#include <functional>
#include <future>
#include <memory>
#include <vector>

// Makes media devices. The real engine is a module (libvelto_mpv.so) loaded
// at run time, because linking libmpv into the program triples its start-up
// time and holds some 35 MiB: it is loaded on a worker thread when something
// is first about to play (preload, whenLoaded), never before. Without the
// module, or without libmpv, a warning says why and every device fails to open
// with "not installed" (263); a factory given no module files makes silent
// NullMediaDevices instead.
class MediaDeviceFactory
{
public:
    // Searches the program's folder, then the build tree the program came from.
    MediaDeviceFactory();
    // Tries exactly these module files, in order; an empty list means no module.
    explicit MediaDeviceFactory(QStringList moduleFiles);
    ~MediaDeviceFactory();
    MediaDeviceFactory(const MediaDeviceFactory &) = delete;
    MediaDeviceFactory &operator=(const MediaDeviceFactory &) = delete;

    // Starts loading the module on a worker thread and returns at once.
    void preload();
    // Runs work on this thread once the module is loaded: at once when it
    // is (or when there is no module to load), else after a load started now.
    void whenLoaded(std::function<void()> work);
    bool isLoaded() const { return m_loaded != nullptr; }
    // Loading or loaded: something asked for the engine.
    bool requested() const { return m_loaded || m_pending.valid(); }
    // Waits for a preload in progress, or loads now on first use.
    std::unique_ptr<MediaDevice> create();
    // True once create() or a finished preload found the module.
    bool hasEngine();
    // Why the module could not be used; empty when it was.
    QString problem();

private:
    struct Loaded
    {
        using Create = MediaDevice *(*)(const char *const *options);
        Create create = nullptr;
        QString problem;
    };
    static Loaded load(const QStringList &files);
    const Loaded &loaded();
    void runWaiting();

    QStringList m_files;
    std::future<Loaded> m_pending;
    std::unique_ptr<Loaded> m_loaded;
    std::vector<std::function<void()>> m_waiting;
    // Receives the worker's word that the load ended; it outlives the worker,
    // which the destructor waits for.
    QObject m_context;
};
