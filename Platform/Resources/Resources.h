// The resource services for hosts that do not have them: blocks of bytes in files, each with a type, a number
// and perhaps a name. Only what the library calls is here.
//
// A resource is loaded when it is first looked up, and stays loaded until its file is closed; its handle
// belongs to the file. Operations without a "1" in their names search all open files, newest first. Those
// with a "1" search the newest file only, and new resources go there. For one thread at a time.
#pragma once

#include <cstdint>

#include "Platform/Resources/Handles.h"
#include "Platform/Resources/ResourceMap.h"
#include "Platform/Status.h"

using Str255 = unsigned char[256];
using ConstStr255Param = const unsigned char*;
using StringHandle = unsigned char**;

constexpr OSErr addResFailed = -194;  // NOLINT: the services' name
constexpr OSErr resNotFound = -192;   // NOLINT: the services' name
constexpr OSErr resFNotFound = -193;  // NOLINT: the services' name
constexpr OSErr opWrErr = -61;        // NOLINT: the services' name

/// Null if no open file has it or there is no memory: ResError tells which.
Handle GetResource(ResType type, ResID id);
/// The case of ASCII letters is ignored in names. Of several resources, the one with the least number is found.
Handle Get1NamedResource(ResType type, ConstStr255Param name);
/// The string resource ('STR ') of a number; null if there is none. It need not be a whole Pascal string.
StringHandle GetString(ResID id);
/// Copies a string, the first one being 1, of a string-list resource ('STR#'); the empty string if there is
/// no such list or string, or the list ends inside it, and where ResError says that memory has run out.
void GetIndString(Str255 string, ResID list, short index);

/// Gives a block made by NewHandle to the newest file, to be written as a resource; an empty name or
/// null is none. Refused, with the block still the caller's, by a file that was opened for reading
/// only, and where the layout cannot hold it.
void AddResource(Handle handle, ResType type, ResID id, ConstStr255Param name);
/// Marks a resource: its bytes in memory are to be written. Refused where the file was opened for reading only.
void ChangedResource(Handle handle);
/// A number from 128 up that no resource of the type has in any open file; 0 if all are taken.
ResID UniqueID(ResType type);
/// The status of the last operation that looked up, added or changed a resource: noErr, resNotFound if no file
/// has it, memFullErr if memory ran out.
OSErr ResError();
