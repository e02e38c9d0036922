/* The table of observers (service/support/observertable.h) with one observer: threads of which each adds it,
 * removes it, or announces that the controls go or are there; one may have them replaced in between. Each step of a
 * process is one that no other thread can part: what is done under the lock, or one call to the instrument. */

#ifndef THREADS
#define THREADS 3
#endif
#define REGISTRATIONS (THREADS + 1) /* one from before, and one for each thread that adds */
#define CONTROLS 2

typedef Registration {
    bool attached;
    byte underWay;
    byte caller;
    bool uncertain;
    bool isNew;
    bool silent;
    bool kept; /* by the call that removes it */
};
typedef Control {
    byte strong;                  /* owners */
    byte has[REGISTRATIONS + 1]; /* how often each registration is registered */
};

Registration registration[REGISTRATIONS + 1];
Control control[CONTROLS + 1]; /* the one of the number 0 is none */
byte made = 0;                 /* registrations */
byte entry = 0;                /* the registration in the table; 0: none */
byte offered = 1;
byte handle = 1;
byte ended = 0;
bool wasAdded = false;
bool wasRemoved = false;
bool wasReplaced = false;
bool wasAnnounced = false;
bool isAddedMeanwhile = false;
bool wentInUse = false;        /* a control, with the observer */

mtype = { add, remove, detachAll, attachAll, replace };

#define my registration[mine]

inline lockControl(locked) {
    d_step {
        if
        :: control[handle].strong == 0 -> handle = offered
        :: else
        fi;
        locked = handle;
        if
        :: control[locked].strong > 0 -> control[locked].strong++
        :: else -> locked = 0
        fi
    }
}

inline letGo(locked) {
    d_step {
        if
        :: locked != 0 ->
            control[locked].strong--;
            if
            :: control[locked].strong == 0 ->
                for (i : 1 .. REGISTRATIONS) {
                    wentInUse = wentInUse || control[locked].has[i] != 0;
                    control[locked].has[i] = 0
                };
                i = 0
            :: else
            fi;
            locked = 0
        :: else
        fi
    }
}

/* Under the lock: what is decided meets the calls of other threads. */
inline meet() {
    if
    :: my.underWay > 0 && my.caller != _pid -> my.uncertain = true
    :: else
    fi
}

inline takeOver() {
    my.caller = _pid;
    my.uncertain = false
}

inline beginCall() {
    meet();
    if
    :: my.underWay == 0 -> takeOver()
    :: else
    fi;
    my.underWay++
}

/* A registration that nobody keeps is gone: no control that lives may have it. */
inline expectKeptIfRegistered() {
    if
    :: entry != mine && my.underWay == 0 && !my.kept ->
        assert(control[1].strong == 0 || control[1].has[mine] == 0);
        assert(control[2].strong == 0 || control[2].has[mine] == 0)
    :: else
    fi
}

proctype Thread() {
    mtype deed;
    byte mine, locked, all, i;
    bool target, first, wasNew, ending;

    if
    :: deed = add
    :: deed = remove
    :: atomic { !wasReplaced -> wasAnnounced = true; deed = detachAll }
    :: atomic { !wasReplaced -> wasAnnounced = true; deed = attachAll }
    :: atomic { !wasReplaced && !wasAnnounced -> wasReplaced = true; deed = replace }
    fi;
    if
    :: deed == add -> goto adding
    :: deed == remove -> goto removing
    :: deed == detachAll || deed == replace -> target = false; goto changing
    :: deed == attachAll -> target = true; goto changing
    fi;

adding:
#ifdef DECIDED_IN_TWO_STEPS
    atomic { wasAdded = true; isAddedMeanwhile = true; first = (entry == 0) };
    atomic {
        if
        :: first ->
            first = false;
#else
    atomic {
        wasAdded = true;
        isAddedMeanwhile = true;
        if
        :: entry == 0 ->
#endif
            made++;
            mine = made;
            entry = mine;
            my.attached = true;
            my.isNew = true;
            beginCall()
        :: else
        fi
    };
    if
    :: mine == 0 -> goto end
    :: else -> lockControl(locked); goto attaching
    fi;

removing:
    atomic {
        wasRemoved = true;
        mine = entry;
        if
        :: mine != 0 ->
            entry = 0;
            my.kept = true;
            my.attached = false;
            beginCall();
            if
            :: my.uncertain -> my.silent = true
            :: else
            fi
        :: else
        fi
    };
    if
    :: mine == 0 -> goto end
    :: else -> lockControl(locked); goto detaching
    fi;

changing:
    lockControl(all);
    first = true;
    if
    :: all == 0 -> goto changed
    :: else
    fi;

deciding:
    atomic {
        mine = entry;
        ending = true;
        if
        :: mine != 0 ->
            wasNew = my.isNew;
            my.isNew = false;
            if
            :: my.attached == target -> meet()
            :: my.attached != target && (first || (wasNew && my.caller != _pid)) ->
                my.attached = target;
                beginCall();
                ending = false
            :: else
            fi
        :: else
        fi;
        first = false;
        wasNew = false
    };
    if
    :: ending -> goto changed
    :: else -> d_step { locked = all; control[all].strong++ }
    fi;
    if
    :: target -> goto attaching
    :: else -> goto detaching
    fi;

changed:
    letGo(all);
    if
    :: deed == replace && !target ->
        d_step { all = offered; offered = 0 };
        letGo(all);
        control[1].strong == 0; /* new ones come when nobody uses the old ones */
        d_step { offered = 2; control[2].strong = 1 };
        target = true;
        goto changing
    :: else -> goto end
    fi;

attaching:
    if
    :: my.silent -> letGo(locked)
    :: else
    fi;
    if
    :: locked != 0 -> control[locked].has[mine]++
    :: else
    fi;
    d_step {
        ending = !my.uncertain;
        if
        :: ending ->
            if
            :: locked == 0 -> my.attached = false
            :: else
            fi;
            my.underWay--;
            expectKeptIfRegistered()
        :: else
        fi
    };
    if
    :: ending -> goto called
    :: else -> goto detaching
    fi;

detaching:
    if
    :: locked != 0 -> control[locked].has[mine] = 0
    :: else
    fi;
    d_step { /* whether this call has to put right what calls that overlapped have left */
        ending = true;
        if
        :: my.uncertain && my.underWay == 1 ->
            takeOver();
#ifndef NOT_PUT_RIGHT
            if
            :: my.attached -> ending = false
            :: else
            fi
#endif
        :: else
        fi;
        if
        :: ending -> my.underWay--; expectKeptIfRegistered()
        :: else
        fi
    };
    if
    :: ending -> goto called
    :: else -> letGo(locked); lockControl(locked); goto attaching
    fi;

called:
    if
    :: deed == remove ->
        d_step { my.silent = true; my.kept = false; expectKeptIfRegistered() }
    :: else
    fi;
    letGo(locked);
    if
    :: deed == add || deed == remove -> goto end
    :: else -> goto deciding
    fi;

end:
    atomic { mine = 0; ending = false; target = false; first = false; ended++ }
}

init {
    byte i, has;
    control[1].strong = 1;
    if
    :: d_step {
        made = 1;
        entry = 1;
        registration[1].attached = true;
        registration[1].isNew = true;
        control[1].has[1] = 1;
        wasAdded = true
       }
    :: skip
    fi;
    atomic {
        for (i : 1 .. THREADS) { run Thread() };
        i = 0
    };
    ended == THREADS;

    /* At rest the instrument has what the table says, and nothing that is gone. */
    d_step {
        for (i : 1 .. REGISTRATIONS) {
            has = control[offered].has[i];
            if
            :: i == entry -> assert(has == registration[i].attached || (wentInUse && isAddedMeanwhile))
            :: else -> assert(has == 0)
            fi;
            assert(registration[i].underWay == 0)
        }
        /* Who comes after the announcement and before the going of a control goes with it. */
        assert(!wentInUse || isAddedMeanwhile || wasRemoved);
        assert(control[offered].strong == 1);
        if
        :: wasAdded && !wasRemoved -> assert(entry != 0)
        :: !wasAdded -> assert(entry == 0)
        :: else
        fi
    }
}
