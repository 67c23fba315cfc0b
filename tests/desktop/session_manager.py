"""A session manager as those of the desktops are, over libSM. Prints the address for its clients,
then a line with the restart hint whenever a client tells one."""

import ctypes
import os
import select

SM = ctypes.CDLL("libSM.so.6")
ICE = ctypes.CDLL("libICE.so.6")
SAVE_LOCAL = 1
INTERACT_NONE = 0

POINTER = ctypes.c_void_p
REGISTER = ctypes.CFUNCTYPE(ctypes.c_int, POINTER, POINTER, POINTER)
INTERACT_REQUEST = ctypes.CFUNCTYPE(None, POINTER, POINTER, ctypes.c_int)
INTERACT_DONE = ctypes.CFUNCTYPE(None, POINTER, POINTER, ctypes.c_int)
SAVE_REQUEST = ctypes.CFUNCTYPE(None, POINTER, POINTER, ctypes.c_int, ctypes.c_int, ctypes.c_int,
                                ctypes.c_int, ctypes.c_int)
PLAIN = ctypes.CFUNCTYPE(None, POINTER, POINTER)
DONE = ctypes.CFUNCTYPE(None, POINTER, POINTER, ctypes.c_int)
CLOSED = ctypes.CFUNCTYPE(None, POINTER, POINTER, ctypes.c_int, POINTER)


class Value(ctypes.Structure):
    _fields_ = [("length", ctypes.c_int), ("value", POINTER)]


class Property(ctypes.Structure):
    _fields_ = [("name", ctypes.c_char_p), ("type", ctypes.c_char_p), ("count", ctypes.c_int),
                ("values", ctypes.POINTER(Value))]


SET = ctypes.CFUNCTYPE(None, POINTER, POINTER, ctypes.c_int,
                       ctypes.POINTER(ctypes.POINTER(Property)))
DELETE = ctypes.CFUNCTYPE(None, POINTER, POINTER, ctypes.c_int, POINTER)


class Callbacks(ctypes.Structure):
    _fields_ = [field for name, kind in (
        ("register", REGISTER), ("interact_request", INTERACT_REQUEST),
        ("interact_done", INTERACT_DONE), ("save_request", SAVE_REQUEST),
        ("phase2_request", PLAIN), ("save_done", DONE), ("closed", CLOSED), ("set", SET),
        ("delete", DELETE), ("get", PLAIN)) for field in ((name, kind), (name + "_data", POINTER))]


NEW_CLIENT = ctypes.CFUNCTYPE(ctypes.c_int, POINTER, POINTER, ctypes.POINTER(ctypes.c_ulong),
                              ctypes.POINTER(Callbacks), POINTER)
AUTHENTICATE = ctypes.CFUNCTYPE(ctypes.c_int, ctypes.c_char_p)

SM.SmsGenerateClientID.restype = POINTER
SM.SmsGenerateClientID.argtypes = [POINTER]
SM.SmsRegisterClientReply.argtypes = [POINTER, POINTER]
SM.SmsSaveYourself.argtypes = [POINTER] + [ctypes.c_int] * 4
SM.SmsSaveYourselfPhase2.argtypes = [POINTER]
SM.SmsSaveComplete.argtypes = [POINTER]
ICE.IceComposeNetworkIdList.restype = ctypes.c_char_p
ICE.IceAcceptConnection.restype = POINTER
ICE.IceAcceptConnection.argtypes = [POINTER, ctypes.POINTER(ctypes.c_int)]
ICE.IceConnectionNumber.argtypes = [POINTER]
ICE.IceGetListenConnectionNumber.argtypes = [POINTER]
ICE.IceSetHostBasedAuthProc.argtypes = [POINTER, AUTHENTICATE]
ICE.IceProcessMessages.argtypes = [POINTER, POINTER, POINTER]


def register(client, _data, _previous_id):
    SM.SmsRegisterClientReply(client, SM.SmsGenerateClientID(client))
    SM.SmsSaveYourself(client, SAVE_LOCAL, 0, INTERACT_NONE, 0)
    return 1


def set_properties(_client, _data, count, properties):
    for i in range(count):
        given = properties[i].contents
        if given.name == b"RestartStyleHint":
            print("restart hint", ctypes.string_at(given.values[0].value, 1)[0], flush=True)


CALLBACKS = Callbacks(
    register=REGISTER(register),
    interact_request=INTERACT_REQUEST(lambda *_: None),
    interact_done=INTERACT_DONE(lambda *_: None),
    save_request=SAVE_REQUEST(lambda *_: None),
    phase2_request=PLAIN(lambda client, _: SM.SmsSaveYourselfPhase2(client)),
    save_done=DONE(lambda client, *_: SM.SmsSaveComplete(client)),
    closed=CLOSED(lambda *_: None),
    set=SET(set_properties),
    delete=DELETE(lambda *_: None),
    get=PLAIN(lambda *_: None))


@NEW_CLIENT
def new_client(_client, _data, mask, callbacks, _reason):
    mask[0] = (1 << 10) - 1
    ctypes.memmove(callbacks, ctypes.byref(CALLBACKS), ctypes.sizeof(CALLBACKS))
    return 1


@AUTHENTICATE
def anybody(_host):
    return 1


def main():
    error = ctypes.create_string_buffer(256)
    assert SM.SmsInitialize(b"test", b"1", new_client, None, anybody, 256, error), error.value
    count = ctypes.c_int()
    listeners = ctypes.POINTER(POINTER)()
    assert ICE.IceListenForConnections(ctypes.byref(count), ctypes.byref(listeners), 256, error)
    for i in range(count.value):
        ICE.IceSetHostBasedAuthProc(listeners[i], anybody)
    print(ICE.IceComposeNetworkIdList(count, listeners).decode(), flush=True)
    waiting = {ICE.IceGetListenConnectionNumber(listeners[i]): listeners[i]
               for i in range(count.value)}
    connections = {}
    while True:
        for number in select.select(list(waiting) + list(connections), [], [])[0]:
            if number in waiting:
                status = ctypes.c_int()
                connection = ICE.IceAcceptConnection(waiting[number], ctypes.byref(status))
                if connection:
                    connections[ICE.IceConnectionNumber(connection)] = connection
            elif ICE.IceProcessMessages(connections[number], None, None) != 0:
                del connections[number]


if __name__ == "__main__":
    os.umask(0o077)
    main()
