// Calls of exported functions, under watch.
//
//     ruxStatus status = call(ruxiSet_32f_C1R, FloatBits{0x7FA00000}, image.data(), image.step(), roi);
//     status = callUnder(state, ruxi..., ...);          // in a floating-point state that the host may have set
//
// Before each call every register is spoiled; in 32-bit builds the stack stands on changing 4-byte boundaries. After
// each call the following is checked, and a failure added where it does not hold: callee-saved registers, the stack
// pointer (__stdcall pops its arguments, to the byte), the words above the arguments, x87 control word, MXCSR (but its
// exception flags), an empty x87 stack (so a cleared MMX state), a clear direction flag.
#pragma once

#include <utility>

#include "ruxlib/types.h"
#include "support/argument_words.h"
#include "support/host_state.h"

namespace rux::test {

namespace detail {

enum class Convention { callerPops, calleePops };

uint64_t nextGarbage();

// Calls and checks; the result is that of the function, as it stood in eax or rax.
uintptr_t callWatched(void (*function)(), ArgumentWords&, Convention, const HostState&);

// Calls without a check, on a stack as compilers want it: for the models.
uintptr_t callPlain(void (*function)(), ArgumentWords&);

template <class Result>
Result resultFrom(uintptr_t word)
{
    static_assert(!std::is_floating_point_v<Result>);
    if constexpr (std::is_void_v<Result>) return;
    else if constexpr (std::is_pointer_v<Result>) return reinterpret_cast<Result>(word);
    else return static_cast<Result>(word);
}

template <class... Parameters, class... Arguments>
ArgumentWords wordsOf(const Arguments&... arguments)
{
    static_assert(sizeof...(Parameters) == sizeof...(Arguments), "as many arguments as the function has");
    ArgumentWords words(nextGarbage());
    (words.add<Parameters>(arguments), ...);
    return words;
}

}

template <class Result, class... Parameters, class... Arguments>
Result callUnder(const HostState& state, Result(RUXCALL* function)(Parameters...), const Arguments&... arguments)
{
#ifdef _WIN32
    constexpr auto convention = detail::Convention::calleePops;
#else
    constexpr auto convention = detail::Convention::callerPops;
#endif
    auto words = detail::wordsOf<Parameters...>(arguments...);
    return detail::resultFrom<Result>(
        detail::callWatched(reinterpret_cast<void (*)()>(function), words, convention, state));
}

template <class Result, class... Parameters, class... Arguments>
Result call(Result(RUXCALL* function)(Parameters...), const Arguments&... arguments)
{
    return callUnder(HostState(), function, arguments...);
}

// The same for a model: arguments travel as bits here too.
template <class Result, class... Parameters, class... Arguments>
Result callModel(Result (*function)(Parameters...), const Arguments&... arguments)
{
    auto words = detail::wordsOf<Parameters...>(arguments...);
    return detail::resultFrom<Result>(detail::callPlain(reinterpret_cast<void (*)()>(function), words));
}

}
