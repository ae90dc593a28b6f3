"""The codes, flags and limits of the channel list, as include/channel/records.h has them."""

from __future__ import annotations

import enum
from typing import Final

#: The version of channel file that is loaded and saved.
FILE_VERSION: Final = 10
#: The earlier versions that can be converted.
EARLIER_VERSIONS: Final = (7, 8, 9)

#: The view code of the first favourite group; group g is the view FIRST_FAVOURITE + g.
FIRST_FAVOURITE: Final = 10

#: The view code of the last favourite group.
LAST_FAVOURITE: Final = 29

#: A PID or an id that is not set.
UNSET_16: Final = 0xFFFF
#: A component tag that is not set.
UNSET_8: Final = 0xFF

#: load_channel() and a sort mode that leaves the views in the file's order.
KEEP_FILE_ORDER: Final = 255


class ViewType(enum.IntEnum):
    """The views that are not favourite groups."""

    ALL = 0
    TV = 1
    RADIO = 2
    USER = 3
    WORK = 4
    PROMOTION = 5


class GroupKind(enum.IntEnum):
    """The kinds of groups that have a table in the list."""

    GENRE = 2
    PROVIDER = 3
    COUNTRY = 4


class SortType(enum.IntEnum):
    """The orders that a view can be brought into."""

    NAME = 2
    TRANSPONDER = 3
    NUMBER = 6
    SERVICE_ID = 8
    FAVOURITE_KEY = 10
    USER_ORDER = 11


class ServiceFlag(enum.IntFlag):
    """The flags of a service that have a meaning to the library; all other bits are the host's and are kept."""

    LOCKED = 0x02
    #: The free-to-air marking: set on scrambled services, clear on free ones.
    SCRAMBLED = 0x04
    SKIP = 0x08
    DSMCC = 0x20


class ServiceType(enum.IntEnum):
    """Service types of ETSI EN 300 468; any other value becomes a member that is named after its number."""

    TV = 0x01
    RADIO = 0x02
    TELETEXT = 0x03
    NVOD_REFERENCE = 0x04
    NVOD_TIME_SHIFTED = 0x05
    MOSAIC = 0x06
    FM_RADIO = 0x07
    ADVANCED_CODEC_RADIO = 0x0A
    ADVANCED_CODEC_MOSAIC = 0x0B
    DATA = 0x0C
    MHP = 0x10
    MPEG2_HD_TV = 0x11
    ADVANCED_CODEC_SD_TV = 0x16
    ADVANCED_CODEC_SD_NVOD_TIME_SHIFTED = 0x17
    ADVANCED_CODEC_SD_NVOD_REFERENCE = 0x18
    HD_TV = 0x19
    HD_NVOD_TIME_SHIFTED = 0x1A
    HD_NVOD_REFERENCE = 0x1B
    HEVC_TV = 0x1F
    HEVC_UHD_TV = 0x20

    @classmethod
    def _missing_(cls, value: object) -> ServiceType | None:
        if not isinstance(value, int) or not 0 <= value <= 0xFF:
            return None
        member = int.__new__(cls, value)
        member._name_ = f"TYPE_{value}"
        member._value_ = value
        return member


class Verbosity(enum.IntEnum):
    """How much the library writes on standard error; each level includes those before it."""

    SILENT = -1
    ERRORS = 0
    WARNINGS = 1
    TRACES = 2
    DETAILS = 3
    MISSES = 5
