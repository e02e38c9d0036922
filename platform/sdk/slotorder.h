#pragma once

/// Declares two overloads of one virtual operation so that `first` gets the slot before `second` with
/// every compiler: MSVC lays overloads of one name out in the reverse order of their declaration, others
/// in order.
#ifdef _MSC_VER
#define TOV_OVERLOADS_IN_SLOT_ORDER(first, second)                                                                     \
    second;                                                                                                            \
    first
#else
#define TOV_OVERLOADS_IN_SLOT_ORDER(first, second)                                                                     \
    first;                                                                                                             \
    second
#endif
