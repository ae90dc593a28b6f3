/**
 * @file
 * The intrusive doubly linked list of the receiver's base library.
 */
#ifndef BASE_LIST_H
#define BASE_LIST_H

#ifdef __cplusplus
extern "C" {
#endif

/**
 * @defgroup base Base library
 * @brief What a receiver's base library supplies: list links and log levels.
 *
 * `#include <base/list.h>` and `#include <base/verbosity.h>`. A receiver that brings its own base library puts it in
 * place of libchannelbase, see @ref md_docs_guides_porting.
 *
 * A record is linked through a list_head that stands at its very start, so the record's address is its node's
 * address. An empty head, like an unlinked node, points to itself in both words.
 * @{
 */

/** A link: the head of a list, or a node of one. */
typedef struct list_head {
  struct list_head *next; /**< the first node of a head, the next node of a node; the head behind the last */
  struct list_head *prev; /**< the last node of a head, the previous node of a node; the head before the first */
} list_head;

/**
 * Appends a node behind the last node of a list.
 *
 * @param node a node that is in no list; what it points to is not read. Must not be null.
 * @param head the head of the list. Must not be null.
 */
static inline void list_add_tail(list_head *node, list_head *head) {
  node->next = head;
  node->prev = head->prev;
  head->prev->next = node;
  head->prev = node;
}

/**
 * Takes a node out of its list and makes it point to itself.
 *
 * @param node a node that is linked or points to itself. Must not be null.
 */
static inline void list_del_init(list_head *node) {
  node->prev->next = node->next;
  node->next->prev = node->prev;
  node->next = node;
  node->prev = node;
}

/** @} */

#ifdef __cplusplus
}
#endif

#endif
