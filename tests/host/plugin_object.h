#pragma once

// Calls the plug-in's object through the C++ ABI of the host that loads it: on Windows that of the Microsoft compiler,
// whichever compiler builds the tests. Compiled separately for that ABI; hence the C linkage.

extern "C" {

bool callInitPlugin(void* object);
bool callExecute(void* object);

/// Destroys the object as a host does, through its virtual destructor.
void destroyPlugin(void* object);
}
