// Printing a programme a device sent, its windows' entries copied out of their element buffers.
#ifndef GUIDESCREEN_CODEC_EXAMPLES_OPERATIONS_PROGRAMME_PRINT_H
#define GUIDESCREEN_CODEC_EXAMPLES_OPERATIONS_PROGRAMME_PRINT_H

#include "guidescreen_codec.h"

namespace examples {

void PrintProgramme(const tagNET_PROGRAMME_INFO& programme);

}  // namespace examples

#endif  // GUIDESCREEN_CODEC_EXAMPLES_OPERATIONS_PROGRAMME_PRINT_H
