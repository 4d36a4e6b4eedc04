// RapidXML without streams. Its printer does not bring its core along with every compiler, so both come from here, in
// this order.
#pragma once

#ifndef RAPIDXML_NO_STREAMS
#define RAPIDXML_NO_STREAMS
#endif
#include <rapidxml/rapidxml.hpp>

#include <rapidxml/rapidxml_print.hpp>
