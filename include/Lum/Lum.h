// Everything Lum offers, for programs that do not mind the compile time.
#pragma once

#include <Lum/CString.h>
#include <Lum/LossyConversion.h>
#include <Lum/PathView.h>
#include <Lum/Platform.h>
#include <Lum/QueryView.h>
#include <Lum/Redaction.h>
#include <Lum/ResourceFile.h>
#include <Lum/TimeStamp.h>
#include <Lum/Transcoder.h>
#include <Lum/URI.h>
#include <Lum/URILiteral.h>
