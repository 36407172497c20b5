// SPDX-License-Identifier: Apache-2.0
#ifndef PACKAGE_XML_SAXAPI_HPP
#define PACKAGE_XML_SAXAPI_HPP

// The DOM is built by the toolkit's SAX parser, and only that interface lets its input be watched.
// It is deprecated as a whole; files that include this one use it knowingly.
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

#include <QXmlDefaultHandler>
#include <QXmlInputSource>
#include <QXmlSimpleReader>

#endif
