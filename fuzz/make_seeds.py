"""Writes the inputs that the fuzzers begin with: make_seeds.py FOLDER makes FOLDER/TARGET/seed_N for each target."""

import io
import pathlib
import struct
import sys
import zipfile

DOCUMENTS = [
    b'{"a":1,"b":[true,false],"c":{"d":"text","e":null},"f":[]}',
    b'{"s":"\\u00e9\\ud83d\\ude00\\n\\"\\\\\\/","n":[-0,0.1,1e308,5e-324,123456789012345678901234567890]}',
    b'\xef\xbb\xbf {"mixed":[1,"2",[3,[4]],{"five":null}],"":"empty key"} ',
    b'[' * 40 + b']' * 40,
    b'{"a":' * 40 + b'1' + b'}' * 40,
    b'{"control":"\x01\x1f","zero":"\\u0000","a":1,"a":2}',
]
TRANSFERS = [
    b'{"$type":"VYX::Inf::MediaContainer","mediaContainerContent":[{"$type":"Item","b":true,"d":0.5,"i":7,"o":[],'
    b'"y":"AAEC","mediaDescription":"","mediaName":"n"}],"mediaDescription":"d","mediaName":"m"}',
    b'{"$type":"Item","b":false,"d":-1e300,"i":-9007199254740992,"o":[{"$type":"VYX::Inf::MediaContainer",'
    b'"mediaContainerContent":[],"mediaDescription":"","mediaName":""}],"y":"","mediaDescription":"","mediaName":""}',
    b'{"$type":"Nothing"}',
]
TEXTS = [
    b'plain',
    'caf\u00e9 \u20ac \U0001f600 \u00df\u0130\ufb03'.encode(),
    b'\xe2\x82\xed\xa0\x80\xf4\x90\x80\x80\xc0\xaf\xff',
    b'zero\x00inside',
]
URIS = [
    b'ftp://user@h.example:8080/p/q?a=1&b=2#f',
    b'file:///C:/data/a.txt',
    b'http://[::1]:80/x',
    b'a://h:4294967295/../x?y#z',
    b'//host\\share?&&a=&=b##',
]
PATHS = [b'C:\\a\\b.tar.gz', b'/usr//lib/../x/', b'\\\\server\\share\\f', b'name?*<>|:".', b'..\\.\\a/b\\c']
FILTERS = [
    b'%Severity% <= 2 & (%Channel% = "net" | !%Channel% != x)',
    b'not %Severity% > ERROR and %Channel% >= "a b" or %Severity% = 0',
]
FORMATS = [
    b'[%TimeStamp%][%ThreadID%][%Channel%][%Severity%] %Message%',
    b'%TimeStamp(format="%H:%M:%S")% %ProcessID% 100\\% %Message%',
]
SETTINGS = [
    b'[Core]\nFilter="%Severity% <= 3"\nDisableLogging=false\n[Sinks.A]\nDestination=Console\nFormat="%Message%"\n',
    b'# c\n[Sinks.F]\nDestination=TextFile\nFileName="x_%3N_%Y.log"\nRotationSize=1000\nMaxFiles=3\nTarget=old\n'
    b'Append=true\nAutoFlush=no\n[Sinks.S]\nDestination=Syslog\nTarget="/none"\n',
]


def piece(content):
    """A piece as FuzzInput takes it with the largest length."""
    return bytes([len(content)]) + content


def archives():
    """Whole archives, plain and with the rarer parts."""
    for names in (['a.txt'], ['d/', 'd/x', 'd/y/z.bin'], ['caf\u00e9', '../up', '/abs', 'C:\\x', 'con', 'A', 'a']):
        stream = io.BytesIO()
        with zipfile.ZipFile(stream, 'w', zipfile.ZIP_DEFLATED) as archive:
            for index, name in enumerate(names):
                archive.writestr(name, (b'content %d ' % index) * 9 * (not name.endswith('/')))
            archive.comment = b'comment'
        yield stream.getvalue()
    stream = io.BytesIO()
    with zipfile.ZipFile(stream, 'w') as archive:
        with archive.open('large', 'w', force_zip64=True) as entry:
            entry.write(b'zip64')
    yield stream.getvalue()


def built_archives():
    """Archives that support/zip_input.cpp puts together."""
    plain = b'\0' + bytes([0]) + b''.join(bytes([traits, 1, name]) + piece(b'content' * 3)
                                          for traits, name in ((1, 97), (0, 98), (3, 99), (0x10, 100)))
    spoilt = b'\0' + bytes([0]) + bytes([0x80, 4]) + b'../x' + piece(b'content') + b'\x05\x00\x04' + bytes([1, 97])
    return [plain, spoilt]


def seeds():
    """The inputs of each target."""
    values = (0.0, -0.0, 0.1, 1e17, 5e-324, 1.7976931348623157e308, float('nan'))
    numbers = [struct.pack('<d', value) for value in values]
    zips = list(archives()) + built_archives()
    return {
        'base64': TEXTS + [b'AAECAwQ=', b'////', b'AA==', b'A' * 200],
        'json': DOCUMENTS,
        'log_filter': FILTERS + [bytes(range(64))],
        'log_line': [b'\x03\0\0\0\x80' + piece(text) + piece(b'net') + message
                     for text in FORMATS for message in (b'message', TEXTS[2])],
        'log_settings': SETTINGS,
        'message_catalog': [b'{"Key":"text {0}","":""}', b'{"a":1}'] + DOCUMENTS,
        'numbers': [number + bytes(range(12)) + b'%-+10.3lg' for number in numbers] + [b'-0', b'1e400', b'0.1e-300'],
        'paths': [piece(b'x') + path for path in PATHS],
        'percent': TEXTS + [b'a%20b%C3%A9%4%GG%00%25', b'"\\\n\r\t\b\f'],
        'property_tree': [bytes([operation % 10 if count % 2 else 1, 1, 97 + count % 3]) * 20
                          for operation in range(10) for count in range(3)],
        'text_operations': [bytes([operation, 3, 2]) + bytes([len(text)]) + text * 2
                            for operation in range(9) for text in TEXTS[:3]],
        'transfer': TRANSFERS,
        'uri': [piece(b'a') + piece(b'v') + uri for uri in URIS],
        'utf8': TEXTS,
        'wildcard': [b'\0\0' + piece(pattern) + b'aaaaaaab' for pattern in (b'*a*a*b', b'a\\*', b'', b'*', b'a*\\')],
        'zip_extract': [b'\1\0\1' + archive for archive in zips],
        'zip_read': zips,
    }


def main():
    for target, inputs in seeds().items():
        folder = pathlib.Path(sys.argv[1]) / target
        folder.mkdir(parents=True, exist_ok=True)
        for index, content in enumerate(inputs):
            (folder / f'seed_{index:02}').write_bytes(content)


if __name__ == '__main__':
    main()
