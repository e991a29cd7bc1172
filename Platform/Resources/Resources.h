// The resource services, as far as they are called: typed, numbered, named blocks of bytes in files.
//
// A resource is loaded when it is first asked for and stays until its file closes; its handle belongs
// to the file. Operations without a "1" look through the open files, newest first; those with one, and
// what is added, are about the newest alone. For one thread at a time.
#pragma once

#include <cstdint>

#include "Platform/Resources/Handles.h"
#include "Platform/Resources/ResourceMap.h"

using OSErr = std::int16_t;
using Str255 = unsigned char[256];
using ConstStr255Param = const unsigned char*;
using StringHandle = unsigned char**;

constexpr OSErr addResFailed = -194;  // NOLINT: the services' name
constexpr OSErr resNotFound = -192;   // NOLINT: the services' name
constexpr OSErr resFNotFound = -193;  // NOLINT: the services' name
constexpr OSErr memFullErr = -108;    // NOLINT: the services' name
constexpr OSErr opWrErr = -61;        // NOLINT: the services' name

/// Null if no open file has it or there is no memory.
Handle GetResource(ResType type, ResID id);
/// Names are equal in any case of the ASCII letters; of several, the one with the least number is found.
Handle Get1NamedResource(ResType type, ConstStr255Param name);
/// The string resource ('STR ') of a number; null if there is none. It need not be a whole Pascal string.
StringHandle GetString(ResID id);
/// Copies a string, the first one being 1, of a string-list resource ('STR#'); the empty string if there is
/// no such list or string, or the list ends inside it.
void GetIndString(Str255 string, ResID list, short index);

/// Gives a block made by NewHandle to the newest file, to be written as a resource; an empty name or
/// null is none. Refused, with the block still the caller's, by a file opened for reading only or with
/// no room for it.
void AddResource(Handle handle, ResType type, ResID id, ConstStr255Param name);
/// The resource's bytes in memory are to be written. Refused where the file was opened for reading only.
void ChangedResource(Handle handle);
/// A number from 128 up that no resource of the type has in any open file; 0 if all are taken.
ResID UniqueID(ResType type);
/// How the last AddResource or ChangedResource went: 0 if well.
OSErr ResError();
