/// \file
/// The version of the library, as a text and as numbers for the preprocessor.
#ifndef QVOX_VERSION_H
#define QVOX_VERSION_H

/// Before 1.0 a new minor version may change the interface.
#define QVOX_VERSION_MAJOR 0
/// \copydoc QVOX_VERSION_MAJOR
#define QVOX_VERSION_MINOR 1
/// Counts corrections, which leave the interface as it is.
#define QVOX_VERSION_PATCH 0
/// The three as a text.
#define QVOX_VERSION "0.1.0"

#endif
