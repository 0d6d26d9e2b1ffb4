/* GSC_API marks the public interface. Built as a shared library, everything else is hidden and
 * only what carries GSC_API is exported; GSC_STATIC (set by the static library's CMake target and
 * pkg-config file) makes it empty, so that a static copy linked into another shared object
 * exports nothing of its own accord. */
#ifndef GUIDESCREEN_CODEC_EXPORT_H
#define GUIDESCREEN_CODEC_EXPORT_H

#if defined(GSC_STATIC)
#define GSC_API
#elif defined(__GNUC__) || defined(__clang__)
#define GSC_API __attribute__((visibility("default")))
#else
#define GSC_API
#endif

#endif /* GUIDESCREEN_CODEC_EXPORT_H */
