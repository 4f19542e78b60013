#pragma once

#include <QtDebug>

#include <cdio/logging.h>

// libcdio writes every warning to the terminal ("image size not a multiple of
// the block size"...); the reader tells the user what matters, so only its
// errors are kept, as warnings of ours.
inline void quietCdioLog()
{
    cdio_log_set_handler([](cdio_log_level_t level, const char message[]) {
        if (level >= CDIO_LOG_ERROR)
            qWarning("libcdio: %s", message);
    });
}
