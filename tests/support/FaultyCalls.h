#pragma once

// System calls of which one goes wrong.
//
//     for (int calls = 0;; ++calls) {
//         FaultyCalls const faulty(calls, Fate::fails);
//         ...                                     // one call in there fails
//         if (!faulty.hasStruck()) break;         // each of them has had its turn
//     }

#include <unistd.h>

#include <cerrno>
#include <cstddef>

#include "tqplatform/runtime/SystemCalls.h"

/// What becomes of the call: it fails for lack of room or is interrupted, transfers a part of what
/// it should, or is the last that the process makes.
enum class Fate { fails, isInterrupted, isCutShort, endsTheProcess };

/// Puts the calls in place for as long as it lives; one at a time. Removing files always works.
class FaultyCalls {
  public:
    /// The call behind `goodCalls` good ones meets its fate.
    FaultyCalls(int goodCalls, Fate what) {
        using Calls = tqplatform::SystemCalls;
        callsLeft = goodCalls;
        fate = what;
        replace<&Calls::open>();
        replace<&Calls::close>();
        replace<&Calls::read>();
        replace<&Calls::readAt>();
        replace<&Calls::copy>();
        replace<&Calls::seek>();
        replace<&Calls::resize>();
        replace<&Calls::flush>();
        replace<&Calls::status>();
        replace<&Calls::statusOf>();
        replace<&Calls::setMode>();
        replace<&Calls::setTimes>();
        replace<&Calls::access>();
        replace<&Calls::rename>();
        tqplatform::systemCalls.write = [](int file, void const *source, std::size_t count) {
            bool const cut = fate == Fate::isCutShort && callsLeft == 0 && count > 1;
            if (cut) --callsLeft;
            return !cut && strikes() ? -1 : realCalls.write(file, source, cut ? count / 2 : count);
        };
    }
    FaultyCalls(FaultyCalls const &) = delete;
    FaultyCalls &operator=(FaultyCalls const &) = delete;
    ~FaultyCalls() { tqplatform::systemCalls = realCalls; }

    bool hasStruck() const { return callsLeft < 0; }

  private:
    static bool strikes() {
        if (callsLeft-- != 0) return false;
        if (fate == Fate::endsTheProcess) _exit(0);
        errno = fate == Fate::isInterrupted ? EINTR : ENOSPC;
        return true;
    }

    template <auto call, typename Result, typename... Arguments>
    static Result faulty(Arguments... arguments) {
        return strikes() ? Result{-1} : (realCalls.*call)(arguments...);
    }
    template <auto call, typename Result, typename... Arguments>
    static void assign(Result (*&target)(Arguments...)) {
        target = faulty<call, Result, Arguments...>;
    }
    template <auto call>
    static void replace() {
        assign<call>(tqplatform::systemCalls.*call);
    }

    static inline tqplatform::SystemCalls const realCalls = tqplatform::systemCalls;
    static inline int callsLeft = 0;
    static inline Fate fate = Fate::fails;
};
