#include "dispatcher.h"

#include "skin/skinpart.h"

#include <QDebug>
#include <exception>
#include <stdexcept>
#include <string>

void Dispatcher::route(int low, int high, SkinPart &part)
{
    m_routes.push_back({low, high, &part});
}

bool Dispatcher::inMode(const SkinPart &part) const
{
    for (const QString &mode : part.modes())
        for (const QString &skinMode : m_skinModes)
            if (skinMode.contains(mode))
                return true;
    return false;
}

SkinPart *Dispatcher::target(qint16 cmd) const
{
    SkinPart *first = nullptr;
    for (const Route &r : m_routes) {
        if (cmd < r.low || cmd >= r.high)
            continue;
        if (inMode(*r.part))
            return r.part;
        if (!first)
            first = r.part;
    }
    return first;
}

const QString &Dispatcher::linkEntry(const QStringList &list, int index)
{
    if (index < 0 || index > 20 || index >= list.size())
        throw std::out_of_range("subscript out of range: key table entry " + std::to_string(index));
    return list[index];
}

void Dispatcher::DoIt(qint16 cmd)
{
    SkinPart *part = target(cmd);
    if (!part)
        return;
    try {
        part->DoIt(cmd);
    } catch (const std::exception &e) {
        qWarning("DoIt(%d) failed: %s", int(cmd), e.what());
    } catch (...) {
        qWarning("DoIt(%d) failed", int(cmd));
    }
}
