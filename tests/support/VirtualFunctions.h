#pragma once

#include <cstddef>
#include <cstring>

/// \return The place of a virtual function in its interface's table.
template <class Interface, class Function>
std::size_t PlaceOf(Function Interface::*function)
{
    std::size_t place = 0;  // a pointer to a virtual function begins with its offset, and one
    std::memcpy(&place, &function, sizeof place);
    return (place - 1) / sizeof(void*);
}

/// \return How many places the interface's table of virtual functions has, the two of its destructor
/// included.
template <class Interface>
std::size_t VirtualFunctionsOf()
{
    struct Probe : Interface
    {
        virtual void BehindTheLast() = 0;
    };
    return PlaceOf(&Probe::BehindTheLast);
}
