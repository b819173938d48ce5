/// \file
/// All of qvox's public interface.
#ifndef QVOX_QVOX_H
#define QVOX_QVOX_H

#include <qvox/dom.h>
#include <qvox/exception.h>
#include <qvox/parser.h>
#include <qvox/range.h>
#include <qvox/report.h>
#include <qvox/sax.h>
#include <qvox/traversal.h>
#include <qvox/version.h>
#include <qvox/xstring.h>

#endif
