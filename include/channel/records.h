/**
 * @file
 * The records of the channel list, its limits and its codes.
 */
#ifndef CHANNEL_RECORDS_H
#define CHANNEL_RECORDS_H

#include <base/list.h>
#include <stdint.h>

/** @cond
 * Opens and closes the declarations of a header: C linkage, exported from the shared library. */
#ifdef __cplusplus
#define CHANNEL_EXTERN_C_BEGIN extern "C" {
#define CHANNEL_EXTERN_C_END }
#else
#define CHANNEL_EXTERN_C_BEGIN
#define CHANNEL_EXTERN_C_END
#endif
#if defined(__GNUC__)
#define CHANNEL_BEGIN_DECLS _Pragma("GCC visibility push(default)") CHANNEL_EXTERN_C_BEGIN
#define CHANNEL_END_DECLS CHANNEL_EXTERN_C_END _Pragma("GCC visibility pop")
#else
#define CHANNEL_BEGIN_DECLS CHANNEL_EXTERN_C_BEGIN
#define CHANNEL_END_DECLS CHANNEL_EXTERN_C_END
#endif
/** @endcond */

CHANNEL_BEGIN_DECLS

/**
 * @defgroup records Records
 * @brief The records of the channel list, its limits and its codes.
 *
 * `#include <channel/records.h>`. Beside what is said here the @ref rules "rules of every call" hold.
 *
 * Records are plain memory that the host may read and write in place. With 32-bit pointers a record is, byte for
 * byte, its image in the channel file; with 64-bit pointers it holds the same fields in the same order. Every reserved
 * byte is a named field and travels unchanged from a load to the next save. All integers are little-endian.
 *
 * Broadcast fields follow ETSI EN 300 468 (original network and service ids, service types, component tags),
 * ISO/IEC 13818-1 (transport stream ids, PIDs) and ISO/IEC 13818-6 (the DSM-CC data service). The bytes of the file,
 * offset by offset, are in @ref md_docs_file_format.
 * @{
 */

/** How many entries each array of the channel list holds. */
enum {
  MAX_CHANNEL = 5000,       /**< entries of the ALL view, and of the USER view */
  MAX_TV_CHANNEL = 4000,    /**< entries of the TV view */
  MAX_RADIO_CHANNEL = 1000, /**< entries of the radio view */
  MAX_FAV = 20,             /**< favourite groups */
  MAX_FAV_NUM = 40,         /**< entries of one favourite group */
  MAX_PROMO_CHANNEL = 10,   /**< entries of the promotion view */
  MAX_PROVIDER = 500,       /**< provider groups */
  MAX_GENRE = 50,           /**< genre groups */
  MAX_COUNTRY = 200,        /**< country groups */
  MAX_RETURN_CHANNEL = 20   /**< entries of the history of watched channels */
};

/** The current version of the channel file. */
enum { CHANNEL_LIST_VERSION = 10 };

/** The views. A favourite group g (0..19) is the view VIEW_FAVOURITE + g. */
enum {
  VIEW_ALL = 0,            /**< every channel */
  VIEW_TV = 1,             /**< services of service type 1, digital television */
  VIEW_RADIO = 2,          /**< services of service type 2, digital radio sound */
  VIEW_USER = 3,           /**< the user's own list, and the result of a group selection */
  VIEW_WORK = 4,           /**< a scratch view outside the channel list, never saved */
  VIEW_PROMOTION = 5,      /**< promotion channels */
  VIEW_FAVOURITE = 10,     /**< the first favourite group */
  VIEW_FAVOURITE_LAST = 29 /**< the last favourite group */
};

/** The kinds of group lists. */
enum {
  GROUP_ALL = 0,       /**< no grouping */
  GROUP_SATELLITE = 1, /**< by the service's network index */
  GROUP_GENRE = 2,     /**< by genre id */
  GROUP_PROVIDER = 3,  /**< by provider id */
  GROUP_COUNTRY = 4,   /**< by country id */
  GROUP_FTACAS = 5,    /**< free-to-air or scrambled */
  GROUP_FAV = 6        /**< a favourite group */
};

/** The sort types of the sorting functions. */
enum {
  SORT_CH_NAME = 2,      /**< the service's name, without regard to case */
  SORT_TRANSPONDER = 3,  /**< frequency, then service id */
  SORT_FTA = 4,          /**< partition by CHANNEL_FLAG_FTA, sort_vindex_by_flag() only */
  SORT_LOCK = 5,         /**< partition by CHANNEL_FLAG_LOCKED, sort_vindex_by_flag() only */
  SORT_NUMBER = 6,       /**< major, then minor channel number */
  SORT_BOUQUET = 7,      /**< not supported: the sort fails */
  SORT_SERVICE_ID = 8,   /**< service id */
  SORT_FAV_DEFAULT = 10, /**< position key in a favourite group, then service id */
  SORT_USER_TYPE = 11    /**< the user order key of the real channel */
};

/**
 * The bits of channel_st::flag that the library itself reads; the others are the host's. Service lists of GROUP_FTACAS
 * also read 0x40, for the group with the id 2.
 */
enum {
  CHANNEL_FLAG_LOCKED = 0x02, /**< the channel is locked (limited) */
  CHANNEL_FLAG_FTA = 0x04,    /**< the free-to-air marking: clear on free services, set on scrambled ones */
  CHANNEL_FLAG_SKIP = 0x08,   /**< passed over when zapping */
  CHANNEL_FLAG_DSMCC = 0x20   /**< the channel carries the DSM-CC data service (ISO/IEC 13818-6) */
};

/** DVB service types (ETSI EN 300 468) that have a view of their own. */
enum {
  SERVICE_TYPE_TV = 1,   /**< digital television service */
  SERVICE_TYPE_RADIO = 2 /**< digital radio sound service */
};

typedef struct channel_st channel_st;
typedef struct tp_ch_st tp_ch_st;
typedef struct network_ch_st network_ch_st;
typedef struct virtual_channel_st virtual_channel_st;
typedef struct group_st group_st;
typedef struct channel_list_st channel_list_st;
typedef struct return_channel_st return_channel_st;
typedef struct name_slot_st name_slot_st;

/** One numbered entry of a view ("vch"): an identity, the number shown, and a cached pointer to the real channel. */
struct virtual_channel_st {
  int8_t vch_tag;       /**< opaque tag, matched by lookups by transport identity; 0 on entries of a merge */
  uint8_t favorite_id;  /**< position key inside a favourite group */
  int16_t major_ch_num; /**< the channel number shown to the user */
  int16_t minor_ch_num; /**< the minor number */
  uint8_t net_index;    /**< network index: which source the signal comes from */
  uint8_t reserved_7;   /**< carried unchanged */
  uint32_t frequency;   /**< transponder frequency, in the unit the channel search stores */
  uint8_t polarisation; /**< 0 horizontal, otherwise vertical */
  uint8_t reserved_13;  /**< carried unchanged */
  uint16_t service_id;  /**< service id (EN 300 468) */
  uint16_t network_id;  /**< original network id (EN 300 468) */
  uint16_t ts_id;       /**< transport stream id (ISO/IEC 13818-1) */
  channel_st *rch;      /**< the real channel; a cache, refreshed by every load, null when it does not resolve */
};

/** One name of a channel. */
struct name_slot_st {
  uint8_t reserved_0;  /**< carried unchanged */
  char text[96];       /**< NUL-terminated when shorter; may begin with a character-table selector byte below 0x20 */
  uint8_t reserved_97; /**< carried unchanged */
  uint16_t name_len;   /**< length of the text in bytes */
};

/** A real channel ("rch"): one service on its transponder. */
struct channel_st {
  list_head list;           /**< link in the transponder's rch_list */
  name_slot_st name[2];     /**< slot 0 is the service name */
  uint8_t reserved_208[2];  /**< carried unchanged */
  int16_t country_id;       /**< id of the country group; 0 after every load; a merge marks present channels with 1 */
  int16_t genre_id;         /**< id of the genre group */
  int16_t provider_id;      /**< id of the provider group */
  uint8_t net_index;        /**< network index */
  uint8_t reserved_217[7];  /**< carried unchanged */
  int64_t frequency;        /**< transponder frequency */
  uint8_t service_type;     /**< service type (EN 300 468): 1 television, 2 radio */
  uint8_t source_type;      /**< where the service is received from */
  uint16_t ts_id;           /**< transport stream id */
  uint8_t reserved_236[4];  /**< carried unchanged */
  uint16_t network_id;      /**< original network id */
  uint16_t service_id;      /**< service id; 0xFFFF when unset */
  uint8_t polarisation;     /**< 0 horizontal, otherwise vertical */
  uint8_t reserved_245;     /**< carried unchanged */
  uint16_t pmt_pid;         /**< PID (ISO/IEC 13818-1) of the program map table; 0xFFFF when unset, as all PIDs here */
  uint16_t pcr_pid;         /**< PID of the program clock reference */
  uint8_t video_tag;        /**< stream component tag (EN 300 468) of the video; 0xFF when unset */
  uint8_t reserved_251;     /**< carried unchanged */
  uint16_t video_pid;       /**< PID of the video */
  uint16_t video_ecm_pid;   /**< PID of the video's entitlement control messages */
  uint8_t audio_tag;        /**< stream component tag of the audio; 0xFF when unset */
  uint8_t reserved_257;     /**< carried unchanged */
  uint16_t audio_pid;       /**< PID of the audio */
  uint16_t reserved_pid;    /**< 0xFFFF when unset; carried unchanged */
  uint8_t reserved_262[24]; /**< carried unchanged */
  uint16_t reserved_id;     /**< 0xFFFF when unset; carried unchanged */
  uint8_t flag;             /**< CHANNEL_FLAG_ bits; other bits are the host's */
  uint8_t reserved_289[9];  /**< carried unchanged */
  int16_t user_order_key;   /**< the key of SORT_USER_TYPE */
  uint8_t reserved_300[12]; /**< carried unchanged */
};

/** A transponder: one transport stream and its real channels. */
struct tp_ch_st {
  list_head list;           /**< link in the network's tp_list */
  uint16_t ts_id;           /**< transport stream id */
  uint8_t reserved_10[2];   /**< carried unchanged */
  uint32_t frequency;       /**< frequency */
  uint8_t polarisation;     /**< 0 horizontal, otherwise vertical */
  uint8_t reserved_17;      /**< carried unchanged */
  uint16_t rch_num;         /**< number of real channels in rch_list */
  uint8_t reserved_20[4];   /**< carried unchanged */
  list_head rch_list;       /**< head of the real channels */
  uint8_t reserved_32[304]; /**< carried unchanged, zero when created */
};

/** A network, known by its network index and its original network id together. */
struct network_ch_st {
  list_head list;           /**< link in channel_list_st::network_list */
  uint8_t net_index;        /**< network index: the source of the signal */
  uint8_t reserved_9;       /**< carried unchanged */
  uint16_t network_id;      /**< original network id */
  char network_name[64];    /**< name, not necessarily terminated */
  uint16_t tp_num;          /**< number of transponders in tp_list */
  uint8_t reserved_78[2];   /**< carried unchanged */
  list_head tp_list;        /**< head of the transponders */
  uint8_t reserved_88[328]; /**< carried unchanged, zero when created */
};

/** A provider, genre, country or favourite group. */
struct group_st {
  uint16_t reserved_0; /**< carried unchanged */
  int16_t id;          /**< group id, unique in its table */
  int16_t name_len;    /**< length of the name in bytes, without the terminator */
  char name[98];       /**< name; may fill its field */
};

/** The channel list: its settings, the group tables, every saved view and the head of the hierarchy. */
struct channel_list_st {
  int16_t version;                                 /**< version of the layout, 10 */
  int8_t use_tuner;                                /**< the host's tuner setting; 255 (-1) after initialisation */
  int8_t ch_type;                                  /**< 0, or the favourite group chosen last */
  uint16_t bouquet_id;                             /**< bouquet id (EN 300 468); 0xFFFF after initialisation */
  int8_t use_group_list;                           /**< the group kind in use (GROUP_ codes) */
  int8_t service_type;                             /**< the view that the list came from: 1 TV, 2 radio, or another */
  int8_t net_index;                                /**< network index in use; 255 (-1) for all networks */
  uint8_t reserved_9;                              /**< carried unchanged */
  int16_t sub_group_id;                            /**< the group id in use; -1 after initialisation */
  group_st provider[MAX_PROVIDER];                 /**< providers, sorted by name */
  int16_t provider_num;                            /**< providers in use, 0..500 */
  group_st genre[MAX_GENRE];                       /**< genres */
  int16_t genre_num;                               /**< genres in use, 0..50 */
  group_st country[MAX_COUNTRY];                   /**< countries */
  int16_t country_num;                             /**< countries in use, 0..200 */
  group_st favorite_group[MAX_FAV];                /**< names and ids of the favourite groups */
  int16_t favorite_group_num;                      /**< favourite groups in use, 0..20; its low byte is read, signed */
  int16_t vch_type;                                /**< code of the current view */
  uint8_t reserved_80102[2];                       /**< carried unchanged */
  virtual_channel_st *cur_vch;                     /**< first entry of the current view */
  int16_t *cur_vnumber;                            /**< count of the current view */
  virtual_channel_st vch[MAX_CHANNEL];             /**< the ALL view */
  int16_t vnumber;                                 /**< entries of the ALL view in use */
  uint8_t reserved_200114[2];                      /**< carried unchanged */
  virtual_channel_st tv_vch[MAX_TV_CHANNEL];       /**< the TV view */
  int16_t tv_vnumber;                              /**< entries of the TV view in use */
  uint8_t reserved_296118[2];                      /**< carried unchanged */
  virtual_channel_st radio_vch[MAX_RADIO_CHANNEL]; /**< the radio view */
  int16_t radio_vnumber;                           /**< entries of the radio view in use */
  uint8_t reserved_320122[2];                      /**< carried unchanged */
  virtual_channel_st favorite_vch[MAX_FAV][MAX_FAV_NUM]; /**< the favourite groups, one view each */
  int16_t favorite_vnumber[MAX_FAV];                     /**< entries of each favourite group in use */
  virtual_channel_st user_vch[MAX_CHANNEL];              /**< the USER view */
  int16_t user_vnumber;                                  /**< entries of the USER view in use */
  uint8_t reserved_459366[2];                            /**< carried unchanged */
  virtual_channel_st promo_vch[MAX_PROMO_CHANNEL];       /**< the promotion view */
  int16_t promo_vnumber;                                 /**< entries of the promotion view in use */
  uint16_t network_num;                                  /**< number of networks in network_list */
  uint8_t reserved_459612[4];                            /**< carried unchanged */
  list_head network_list;                                /**< head of the networks */
  uint8_t reserved_459624[72];                           /**< carried unchanged */
  list_head spare_list_a;                                /**< empty; not used */
  uint8_t reserved_459704[16];                           /**< carried unchanged */
  list_head spare_list_b;                                /**< empty; not used */
  uint8_t reserved_459728[304];                          /**< carried unchanged, zero after initialisation */
};

/** One entry of the history of watched channels. */
struct return_channel_st {
  int8_t group;           /**< the group kind in use when the channel was added */
  int8_t service_type;    /**< channel_list_st::service_type at that time, a view code */
  int16_t sub_group;      /**< channel_list_st::sub_group_id at that time */
  int16_t vindex;         /**< index in the view that was current, or -1; refreshed by remove_return_channel() only */
  uint8_t tag;            /**< tag of the channel */
  uint8_t net_index;      /**< network index of the channel */
  virtual_channel_st vch; /**< a copy of the view entry */
};

/** A real channel of file versions 7 and 8: 168 bytes longer than channel_st, reserved_id and flag near its end. */
typedef struct v8_channel_st {
  list_head list;            /**< link in the transponder's rch_list */
  name_slot_st name[2];      /**< as in channel_st */
  uint8_t reserved_208[2];   /**< reserved */
  int16_t country_id;        /**< as in channel_st */
  int16_t genre_id;          /**< as in channel_st */
  int16_t provider_id;       /**< as in channel_st */
  uint8_t net_index;         /**< as in channel_st */
  uint8_t reserved_217[7];   /**< reserved */
  int64_t frequency;         /**< as in channel_st */
  uint8_t service_type;      /**< as in channel_st */
  uint8_t source_type;       /**< as in channel_st */
  uint16_t ts_id;            /**< as in channel_st */
  uint8_t reserved_236[4];   /**< reserved */
  uint16_t network_id;       /**< as in channel_st */
  uint16_t service_id;       /**< as in channel_st */
  uint8_t polarisation;      /**< as in channel_st */
  uint8_t reserved_245;      /**< reserved */
  uint16_t pmt_pid;          /**< as in channel_st */
  uint16_t pcr_pid;          /**< as in channel_st */
  uint8_t video_tag;         /**< as in channel_st */
  uint8_t reserved_251;      /**< reserved */
  uint16_t video_pid;        /**< as in channel_st */
  uint16_t video_ecm_pid;    /**< as in channel_st */
  uint8_t audio_tag;         /**< as in channel_st */
  uint8_t reserved_257;      /**< reserved */
  uint16_t audio_pid;        /**< as in channel_st */
  uint16_t reserved_pid;     /**< as in channel_st */
  uint8_t reserved_262[198]; /**< reserved */
  uint16_t reserved_id;      /**< at the record's end here, unlike in channel_st */
  uint8_t flag;              /**< at the record's end here, unlike in channel_st */
  uint8_t reserved_463;      /**< reserved */
  uint8_t reserved_464[16];  /**< reserved */
} v8_channel_st;

/** A transponder of file versions 7 and 8: 168 bytes longer at its end. */
typedef struct v8_tp_ch_st {
  tp_ch_st base;      /**< today's record */
  uint8_t extra[168]; /**< 168 bytes of which nothing is read */
} v8_tp_ch_st;

/** A network of file versions 7 and 8: 168 bytes longer at its end. */
typedef struct v8_network_ch_st {
  network_ch_st base; /**< today's record */
  uint8_t extra[168]; /**< 168 bytes of which nothing is read */
} v8_network_ch_st;

/** A channel list of file versions 7 and 8: 168 bytes longer at its end. Version 9 has today's records. */
typedef struct v8_channel_list_st {
  channel_list_st base; /**< today's record */
  uint8_t extra[168];   /**< 168 bytes of which nothing is read */
} v8_channel_list_st;

/** A 4-byte integer of the published interface, zero at start. The library neither reads nor writes it. */
extern int32_t SID_TYPE;

/** @} */

CHANNEL_END_DECLS

#endif
