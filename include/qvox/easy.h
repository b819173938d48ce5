/// \file
/// qvox in a few lines: documents that own their tree, nodes for range-for, events for lambdas,
/// UTF-8 in and out. Header-only, over the classic interface (qvox/qvox.h), and usable beside it.
///
///     const auto order = qvox::easy::document::load("order.xml");
///     for (const qvox::easy::node price : order.all("単価")) std::puts(price.text().c_str());
///
/// Whatever fails raises qvox::easy::error; lack of memory raises std::bad_alloc or ends the
/// process, as in the classic interface. The library still writes a line to standard output for
/// each warning and error: setReportOutput(nullptr) turns that off, for the whole process.
#ifndef QVOX_EASY_H
#define QVOX_EASY_H

#include <qvox/easy/document.h>
#include <qvox/easy/node.h>
#include <qvox/easy/reader.h>
#include <qvox/easy/source.h>
#include <qvox/easy/text.h>
#include <qvox/easy/writer.h>

#endif
