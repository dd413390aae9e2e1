#pragma once

// Calls into the plug-in's object through the C++ ABI of the host that loads it: on Windows that of the Microsoft
// compiler, whatever compiles the tests. Compiled on its own for that ABI; hence the C linkage.

extern "C" {

bool callInitPlugin(void* object);
bool callExecute(void* object);

/// Ends the object as a host does, through its virtual destructor.
void destroyPlugin(void* object);
}
