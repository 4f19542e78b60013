#include "mediadevicefactory.h"

#include "platform/moduleloader.h"
#include "platform/nullmediadevice.h"

#include <QtDebug>

#include <vector>

// The build tree's module, for programs run from where they were built.
#ifndef VELTO_MPV_MODULE
#define VELTO_MPV_MODULE ""
#endif

MediaDeviceFactory::MediaDeviceFactory()
    : m_files(moduleFiles(QStringLiteral("libvelto_mpv.so"), QStringLiteral(VELTO_MPV_MODULE)))
{
}

MediaDeviceFactory::MediaDeviceFactory(QStringList moduleFiles) : m_files(std::move(moduleFiles)) {}

MediaDeviceFactory::~MediaDeviceFactory()
{
    if (m_pending.valid())
        m_pending.wait();
}

void MediaDeviceFactory::preload()
{
    if (m_loaded || m_pending.valid())
        return;
    m_pending = std::async(std::launch::async, [files = m_files, context = &m_context, this] {
        Loaded result = load(files);
        QMetaObject::invokeMethod(
            context, [this] { runWaiting(); }, Qt::QueuedConnection);
        return result;
    });
}

void MediaDeviceFactory::whenLoaded(std::function<void()> work)
{
    if (m_loaded || m_files.isEmpty()) {
        work();
        return;
    }
    m_waiting.push_back(std::move(work));
    preload();
}

void MediaDeviceFactory::runWaiting()
{
    loaded();
    // Work may ask for more work; what it adds runs in this round too.
    while (!m_waiting.empty()) {
        const std::function<void()> work = std::move(m_waiting.front());
        m_waiting.erase(m_waiting.begin());
        work();
    }
}

MediaDeviceFactory::Loaded MediaDeviceFactory::load(const QStringList &files)
{
    const LoadedModule module = loadModule(files, "velto_create_media_device");
    return {reinterpret_cast<Loaded::Create>(module.entry), module.problem};
}

const MediaDeviceFactory::Loaded &MediaDeviceFactory::loaded()
{
    if (!m_loaded) {
        m_loaded = std::make_unique<Loaded>(m_pending.valid() ? m_pending.get() : load(m_files));
        if (!m_loaded->create)
            qWarning().noquote() << "Media devices play silence: the media engine did not load:"
                                 << m_loaded->problem;
    }
    return *m_loaded;
}

std::unique_ptr<MediaDevice> MediaDeviceFactory::create()
{
    const Loaded &engine = loaded();
    if (!engine.create) {
        // Asked for no module (tests): silence. A module that would not load:
        // every file fails with a message, rather than playing nothing quietly.
        auto device = std::make_unique<NullMediaDevice>();
        if (!m_files.isEmpty())
            device->refuseAll(engine.problem);
        return device;
    }
    // VELTO_AUDIO=null runs without sound but with real timing (tests, CI);
    // VELTO_SPEED=4 plays four times as fast (the soak).
    QByteArrayList options;
    const QByteArray audio = qgetenv("VELTO_AUDIO");
    if (!audio.isEmpty())
        options << "ao=" + audio;
    bool isNumber = false;
    const double speed = qEnvironmentVariable("VELTO_SPEED").toDouble(&isNumber);
    if (isNumber && speed >= 0.25 && speed <= 16)
        options << "speed=" + QByteArray::number(speed);
    std::vector<const char *> list;
    for (const QByteArray &option : options)
        list.push_back(option.constData());
    list.push_back(nullptr);
    return std::unique_ptr<MediaDevice>(engine.create(list.data()));
}

bool MediaDeviceFactory::hasEngine()
{
    return loaded().create != nullptr;
}

QString MediaDeviceFactory::problem()
{
    return loaded().problem;
}
