/* The handle of a control (devices/reacquiringcontrol.h): three threads lock it while the control goes and comes.
 * Each step of a process is one that no other thread can part. A control is a number; 0 is none. */

#ifndef LOCKS
#define LOCKS 1 /* of each thread */
#endif
#ifndef CONTROLS
#define CONTROLS 2
#endif

byte strong[CONTROLS + 1]; /* owners of each control */
bool gone[CONTROLS + 1];   /* destroyed by its last owner */
byte offered = 1;
byte releases = 0;
#define NOBODY 255
byte mutex = NOBODY;       /* who has it */
byte pointer = 1;          /* the stored handle: two words, which are copied one after the other */
byte counters = 1;
byte ended = 0;

inline acquire() { atomic { mutex == NOBODY; mutex = _pid } }
inline release() { mutex = NOBODY }

/* Makes an owner of who holds a handle, if the control lives. */
inline lockWeakly(handle, locked) {
#ifdef CHECK_BEFORE_COUNTING
    if
    :: handle != 0 && strong[handle] > 0 -> locked = handle; strong[handle]++
    :: else -> locked = 0
    fi
#else
    d_step {
        if
        :: handle != 0 && strong[handle] > 0 -> strong[handle]++; locked = handle
        :: else -> locked = 0
        fi
    }
#endif
}

inline lockHandle(locked) {
#ifndef COPIED_WITHOUT_LOCK
    acquire();
#endif
    copy = pointer;
    assert(copy == counters); /* not torn */
#ifndef COPIED_WITHOUT_LOCK
    release();
#endif
    lockWeakly(copy, locked);
    if
    :: locked != 0
    :: else ->
#ifdef ASKED_UNDER_LOCK
        acquire();
#endif
        assert(mutex != _pid); /* nobody asks the instrument under the lock */
        d_step { fresh = offered; asked = (_pid == 0) };
#ifdef ASKED_UNDER_LOCK
        release();
#endif
        lockWeakly(fresh, locked);
        acquire();
        pointer = fresh;
        counters = fresh;
        release()
    fi
}

inline unlockControl(locked) {
    d_step {
        if
        :: locked != 0 ->
            strong[locked]--;
            gone[locked] = (strong[locked] == 0);
            locked = 0
        :: else
        fi
    }
}

proctype Locker() {
    byte copy, fresh, locked, before, round;
    bool there, asked;
    do
    :: round < LOCKS ->
        d_step { before = releases; there = offered != 0 };
        lockHandle(locked);
        if
        :: locked != 0 -> assert(!gone[locked]) /* it lives as long as it is lent */
        :: else -> assert(!there || releases != before) /* what is there all the time is lent */
        fi;
        unlockControl(locked);
        d_step { round++; copy = 0; fresh = 0; before = 0; there = false }
    :: else -> break
    od;
    atomic { round = 0; ended++ }
}

proctype Instrument() {
    byte next = 2;
    do
    :: next <= CONTROLS ->
        d_step {
            strong[offered]--;
            gone[offered] = (strong[offered] == 0);
            offered = 0;
            releases++
        };
        d_step { offered = next; strong[next] = 1 };
        next++
    :: else -> break
    od;
    ended++
}

init {
    byte copy, fresh, locked;
    bool asked;
    strong[1] = 1;
    atomic { run Instrument(); run Locker(); run Locker(); run Locker() };
    ended == 4;
    lockHandle(locked);
    assert(locked == CONTROLS);
    unlockControl(locked);
    asked = false;
    lockHandle(locked);
    assert(locked == CONTROLS && !asked); /* the last answer is kept */
    unlockControl(locked);
    assert(strong[CONTROLS - 1] == 0 && strong[CONTROLS] == 1) /* everything is let go of */
}
