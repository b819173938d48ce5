/// \file
/// The version of the library, as a text and as numbers for the preprocessor.
#ifndef QVOX_VERSION_H
#define QVOX_VERSION_H

#define QVOX_VERSION_MAJOR 0
#define QVOX_VERSION_MINOR 1
#define QVOX_VERSION_PATCH 0
#define QVOX_VERSION "0.1.0"

#endif
