"""Channel files put together byte by byte, at the offsets of docs/file-format.md, for pages to be made of."""

import struct

LIST_SIZE = 460_032
VIEWS = {"all": (80_112, 200_112), "tv": (200_116, 296_116), "radio": (296_120, 320_120),
         "user": (339_364, 459_364), "promotion": (459_368, 459_608)}
GROUPS = {"provider": (12, 52_012), "genre": (52_014, 57_214), "country": (57_216, 78_016),
          "favourites": (78_018, 80_098)}
FAVOURITES, FAVOURITE_COUNTS = 320_124, 339_324

LOCKED, SCRAMBLED, SKIPPED, DATA = 0x02, 0x04, 0x08, 0x20
UNSET = 0xFFFF


class ChannelList:
    """Grows network by network; the counts are kept in step."""

    def __init__(self):
        self.list = bytearray(LIST_SIZE)
        struct.pack_into("<hbbHbbb", self.list, 0, 10, -1, 0, UNSET, 0, 1, -1)
        struct.pack_into("<h", self.list, 10, -1)
        self.records = []
        self.identity = None

    def _count(self, at):
        count, = struct.unpack_from("<h", self.list, at)
        struct.pack_into("<h", self.list, at, count + 1)
        return count

    def group(self, kind, id, name):
        table, count = GROUPS[kind]
        at = table + 104 * self._count(count)
        text = name.encode()[:97]
        struct.pack_into("<Hhh98s", self.list, at, 0, id, len(text), text)

    def network(self, net_index, network_id, name):
        self.network_record = bytearray(416)
        struct.pack_into("<BxH64sH", self.network_record, 8, net_index, network_id, name.encode(), 0)
        self.net_index, self.network_id = net_index, network_id
        self.records.append(self.network_record)
        struct.pack_into("<H", self.list, 459_610, struct.unpack_from("<H", self.list, 459_610)[0] + 1)

    def transponder(self, ts_id, frequency, polarisation):
        self.ts_id, self.frequency, self.polarisation = ts_id, frequency, polarisation
        self.transponder_record = bytearray(336)
        struct.pack_into("<HxxIBxH", self.transponder_record, 8, ts_id, frequency, polarisation, 0)
        self.records.append(self.transponder_record)
        struct.pack_into("<H", self.network_record, 76, struct.unpack_from("<H", self.network_record, 76)[0] + 1)

    def service(self, service_id, name, *, type=1, provider=0, genre=0, flag=0, short="", pids=(UNSET,) * 5):
        """On the last transponder. Returns its identity, for entries."""
        record = bytearray(312)
        for at, text in ((9, name), (109, short)):
            text = text if isinstance(text, bytes) else text.encode()
            struct.pack_into("<96sxH", record, at, text[:96], len(text[:96]))
        struct.pack_into("<hhhB", record, 210, 0, genre, provider, self.net_index)
        struct.pack_into("<qBBH", record, 224, self.frequency, type, 1, self.ts_id)
        struct.pack_into("<HHB", record, 240, self.network_id, service_id, self.polarisation)
        pmt, pcr, video, ecm, audio = pids
        struct.pack_into("<HHBxHHBxHH", record, 246, pmt, pcr, 255, video, ecm, 255, audio, UNSET)
        struct.pack_into("<HB", record, 286, UNSET, flag)
        self.records.append(record)
        struct.pack_into("<H", self.transponder_record, 18,
                         struct.unpack_from("<H", self.transponder_record, 18)[0] + 1)
        return (self.net_index, self.frequency, self.polarisation, service_id, self.network_id, self.ts_id)

    def entry(self, view, identity, number, minor=0):
        """view: a name of VIEWS, or a favourite group's number."""
        key = 0
        if isinstance(view, int):
            key = self._count(FAVOURITE_COUNTS + 2 * view)
            at = FAVOURITES + 24 * (40 * view + key)
        else:
            array, count = VIEWS[view]
            at = array + 24 * self._count(count)
        net_index, frequency, polarisation, service_id, network_id, ts_id = identity
        struct.pack_into("<bBhhBxIBxHHH", self.list, at, 0, key, number, minor, net_index, frequency, polarisation,
                         service_id, network_id, ts_id)

    def bytes(self):
        return bytes(self.list) + b"".join(self.records)
