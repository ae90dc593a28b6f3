"""What each exported function of the library returns and takes, by public header; a test compares the table with them.

Nothing is parsed at run time. A text is bytes: one that the function takes with its length may hold zero bytes.
"""

from __future__ import annotations

from ctypes import POINTER
from ctypes import c_char_p as TEXT
from ctypes import c_int as INT
from ctypes import c_int8 as I8
from ctypes import c_int16 as I16
from ctypes import c_int32 as I32
from ctypes import c_uint8 as U8
from ctypes import c_uint16 as U16
from ctypes import c_uint32 as U32
from typing import Any, Final

from .records import (
    channel_list_st,
    channel_st,
    group_st,
    network_ch_st,
    return_channel_st,
    tp_ch_st,
    v8_channel_list_st,
    virtual_channel_st,
)

_LIST = POINTER(channel_list_st)
_OLD_LIST = POINTER(v8_channel_list_st)
_NETWORK = POINTER(network_ch_st)
_TRANSPONDER = POINTER(tp_ch_st)
_CHANNEL = POINTER(channel_st)
_ENTRY = POINTER(virtual_channel_st)
_GROUP = POINTER(group_st)
_RETURN = POINTER(return_channel_st)

# net_index, network_id, ts_id, frequency, service_id, polarisation; and the same behind an entry's tag.
_IDENTITY = (U8, U16, U16, U32, U16, U8)
_TAGGED = (I8, *_IDENTITY)

#: Name: (type of the result, types of the arguments).
PROTOTYPES: Final[dict[str, tuple[Any, tuple[Any, ...]]]] = {
    # store.h
    "init_channel_list": (INT, ()),
    "reset_channel_list": (INT, ()),
    "destroy_channel_list": (None, ()),
    "reset_channel": (None, (_CHANNEL,)),
    "alloc_channel_info": (_CHANNEL, ()),
    "alloc_tp_ch_info": (_TRANSPONDER, (U16, U32, U8)),
    "alloc_network_ch_info": (_NETWORK, (U8, U16, TEXT)),
    "add_rch_info": (INT, (_CHANNEL, TEXT)),
    "release_rch_info": (None, (_CHANNEL,)),
    "release_tp_ch_info": (None, (_TRANSPONDER,)),
    "release_network_ch_info": (None, (_NETWORK,)),
    "get_channel_st": (_CHANNEL, _IDENTITY),
    "get_network_ch_info": (_NETWORK, (U8, U16)),
    "get_tp_ch_info_by_network_ch": (_TRANSPONDER, (_NETWORK, U16, U32, U8)),
    "get_rch_ch_info_by_tp_ch": (_CHANNEL, (_TRANSPONDER, U16)),
    # dumps.h
    "channel_version_info": (None, ()),
    "print_channel_list": (None, ()),
    "print_channel_info": (None, (_CHANNEL,)),
    "print_channel_status": (None, ()),
    "print_virtual_channel_list": (None, (I8,)),
    "print_group_info": (INT, (_GROUP, I16)),
    "print_fav_list": (None, (INT,)),
    "print_provider_info": (None, ()),
    # files.h
    "set_target_dir": (TEXT, (TEXT,)),
    "load_channel": (INT, (TEXT, U8)),
    "save_channel": (INT, (TEXT,)),
    "check_load_channel": (INT, ()),
    "v9_load_channel": (_LIST, (TEXT,)),
    "v8_load_channel": (_OLD_LIST, (TEXT,)),
    "v7_load_channel": (_OLD_LIST, (TEXT,)),
    "repair_channel": (INT, (INT, TEXT)),
    # views.h
    "get_channel_list": (_LIST, ()),
    "get_vindex_type": (I8, ()),
    "get_ch_type": (I8, ()),
    "set_bouquet_id": (None, (U16,)),
    "get_bouquet_id": (U16, ()),
    "CHAPI_set_use_tuner": (None, (I8,)),
    "CHAPI_get_use_tuner": (I8, ()),
    "get_channel_list_net_index": (I8, ()),
    "get_virtual_channel_st": (_ENTRY, (I8,)),
    "get_virtual_channel_vnumber": (POINTER(I16), (I8,)),
    "init_vindex": (INT, (I8,)),
    "create_vindex_type": (INT, (I8, I8)),
    "change_vindex_type": (INT, (I8,)),
    "insert_vch_vindex_type": (INT, (U32, U32, U32, U32, U32, U32, I16, I8)),
    "insert_user_vch_vindex": (INT, (I16,)),
    # lookups.h
    "get_channel_list_vch": (_ENTRY, ()),
    "get_channel_list_number": (I16, ()),
    "find_max_channel_number": (U16, ()),
    "get_vchannel_by_vindex": (_ENTRY, (I16,)),
    "vtype_get_vchannel_by_vindex": (_ENTRY, (I16, I8)),
    "get_channel_number": (I16, (I16,)),
    "get_channel_minor_number": (I16, (I16,)),
    "get_channel_index": (I16, (I16,)),
    "get_channel_index_by_number": (I16, (I16, I16)),
    "vtype_get_vindex_by_number": (I16, (I16, I16, I8)),
    "vtype_get_vch_by_number": (_ENTRY, (I16, I16, I8)),
    "get_vch_index_by_service_id": (I16, (U16,)),
    "get_vch_index_by_ts_info": (I16, _TAGGED),
    "vtype_get_vch_by_ts_info": (_ENTRY, (*_TAGGED, I8)),
    "vtype_get_vch_index_by_ts_info": (I16, (*_TAGGED, I8)),
    "vtype_get_vch_by_frequency": (_ENTRY, (I8, U8, U32, U8, I8)),
    "get_channel": (_CHANNEL, (I16,)),
    "get_channel_by_vindex": (_CHANNEL, (I16,)),
    "vtype_get_channel_by_vindex": (_CHANNEL, (I16, I8)),
    # flags.h
    "set_channel_flag": (INT, (*_IDENTITY, U8, INT)),
    "set_channel_flag_by_bit": (INT, (U8,)),
    "clear_channel_flag_by_bit": (INT, (U8,)),
    "set_channel_flag_by_vindex": (INT, (I16, U8, INT)),
    "get_channel_flag_by_vindex": (U8, (I16,)),
    "vtype_set_channel_flag_by_vindex": (INT, (I16, U8, INT, I8)),
    "vtype_get_channel_flag_by_vindex": (U8, (I16, I8)),
    "check_skip_channel_index": (INT, (I16,)),
    "check_available_channel": (INT, (I16,)),
    "rename_channel_info": (INT, (*_IDENTITY, U8, TEXT, I16)),
    "vtype_rename_channel_info": (INT, (I16, U8, TEXT, I16, I8)),
    # sorting.h
    "sort_vch_type": (INT, (I8, I8)),
    "sort_vindex_ex": (INT, (I8,)),
    "sort_vindex_by_number": (INT, (I8,)),
    "sort_vindex": (INT, ()),
    "sort_vindex_by_flag": (INT, (I8, I8)),
    # groups.h
    "get_use_group_list": (I8, ()),
    "get_current_service_type": (I8, ()),
    "get_current_sub_group_id": (I16, ()),
    "get_group_list": (_GROUP, (I8, POINTER(U16))),
    "get_group_st_by_id": (_GROUP, (I8, I16)),
    "find_genre_id": (_GROUP, (I16,)),
    "find_country_id": (_GROUP, (I16,)),
    "get_group_id": (INT, (I8, _ENTRY)),
    "set_group_id": (INT, (I8, _ENTRY, I16)),
    "set_group_list": (INT, (I8, _GROUP, I16)),
    "load_group_list": (INT, (I8,)),
    "save_group_list": (INT, (I8,)),
    "get_country_id_by_service_type": (INT, (I8,)),
    "get_genre_id_by_service_type": (INT, (I8,)),
    # return_channels.h
    "init_return_channel": (None, ()),
    "get_return_channel": (_RETURN, ()),
    "get_return_channel_num": (I16, ()),
    "get_return_channel_by_index": (_RETURN, (I16,)),
    "check_same_return_channel": (INT, _TAGGED),
    "add_return_channel": (None, _TAGGED),
    "remove_return_channel": (INT, _TAGGED),
    "get_promo_channel_vindex": (INT, (POINTER(U16), POINTER(U16))),
    "check_limited_channel": (INT, (_CHANNEL,)),
    "get_limited_channel_flag": (U8, ()),
    "set_limited_channel_flag": (None, (U8,)),
    # removal.h
    "vtype_remove_by_vindex": (INT, (I16, I8)),
    "vtype_remove_by_net_index": (INT, (U8, I8)),
    "vtype_remove_vch": (INT, (*_TAGGED, I8)),
    "vtype_remove_virtual_channel_st": (INT, (*_TAGGED, I8)),
    "remove_invalid_virtual_channel": (INT, ()),
    "remove_channel_st": (INT, _IDENTITY),
    "remove_virtual_channel_st": (INT, _TAGGED),
    "remove_channel_info_by_net_index": (INT, (U8,)),
    # moving.h
    "move_channel": (INT, (I16, I16, POINTER(I16))),
    # providers.h
    "add_provider_info": (INT, (group_st,)),
    "find_provider_info": (_GROUP, (TEXT, I8)),
    "find_provider_id": (_GROUP, (I16,)),
    "get_provider_info_by_index": (_GROUP, (I16,)),
    "get_provider_number": (I16, ()),
    "remove_provider_index": (INT, (I32,)),
    "remove_invalid_provider_info": (INT, ()),
    "get_provider_id_by_service_type": (INT, (I8, POINTER(I16))),
    # service_lists.h
    "create_service_by_group_list_id": (INT, (I8, I16, I8, U8)),
    "remove_service_by_group_list_id": (INT, (I8, I16, I8)),
    "get_group_id_by_service_type": (INT, (I8, I8, _GROUP)),
    "add_fav_ch_group": (INT, (I16, I8, I8, I16)),
    # favourites.h
    "get_fav_group_number": (INT, ()),
    "get_fav_group_info": (_GROUP, (I16,)),
    "get_fav_group_info_by_fav_id": (_GROUP, (I16,)),
    "get_fav_index": (I16, (I16,)),
    "get_fav_vch": (_ENTRY, (I16, I16)),
    "get_fav_vch_number": (I16, (I16,)),
    "get_fav_vindex_by_number": (I16, (I16, I16, I16)),
    "get_fav_index_by_number": (I16, (I16, I16, I16)),
    "get_fav_vch_by_group_name": (I16, (TEXT, POINTER(_ENTRY))),
    "add_fav_group_info": (INT, (group_st,)),
    "rename_favorite_group": (INT, (I16, TEXT, I16)),
    "remove_fav_group": (INT, (I16,)),
    "move_fav_ch_group": (INT, (I16, I16)),
    "add_fav_virtual_channel": (INT, (I16, _ENTRY)),
    "remove_fav_virtual_channel": (INT, (I16, I16)),
    "remove_fav_virtual_channel_by_ts_info": (INT, (I8, I16, U8, U32, U8, U16, U16, U16)),
    "move_fav_channel": (INT, (I16, I16, I16, POINTER(U16))),
    # transport.h
    "get_tp_ch_info": (_TRANSPONDER, (U8, U16, U16, I32, U8)),
    "get_tp_ch_simple": (_TRANSPONDER, (U8, U32, U8)),
    "get_rch_ch_info_by_tp_ch_and_avpid": (_CHANNEL, (_TRANSPONDER, U16, U16)),
    "get_ipchannel": (_CHANNEL, (U8, U16, U16)),
    "get_frequency_by_ts_id": (U32, (U8, U16, U16)),
    "get_polarisation_by_ts_id": (U32, (U8, U16, U16)),
    "get_frequency_by_service_id": (U32, (U8, U16)),
    "get_polarisation_by_service_id": (U32, (U8, U16)),
    "is_ip_channel": (INT, (_CHANNEL,)),
    "is_same_channel": (INT, (_CHANNEL, _CHANNEL)),
    "is_same_vchannel": (INT, (_ENTRY, _ENTRY)),
    "get_dsmcc_channel": (INT, ()),
    "get_channel_list_version": (INT, ()),
    "remove_channel_info_by_frequency": (INT, (INT, U32, U8)),
}
