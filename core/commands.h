#pragma once

#include <QtGlobal>

// Command numbers are what a skin gives its buttons. These are the ones the
// program also sends itself (the remote control, the desktop's media
// controls, start-up), named so both ends read alike.
namespace Command {
constexpr qint16 ShutDown = 1;
constexpr qint16 Stop = 10;
constexpr qint16 Pause = 11;
constexpr qint16 Play = 12;
constexpr qint16 Previous = 14;
constexpr qint16 Next = 15;
constexpr qint16 RepeatItem = 27;
constexpr qint16 Shuffle = 28;
constexpr qint16 PlayPause = 36;
} // namespace Command
