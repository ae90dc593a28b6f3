/* The list of a receiver's own base library, as little of it as a receiver has to bring. */
#ifndef RECEIVER_LIST_H
#define RECEIVER_LIST_H

#ifdef __cplusplus
extern "C" {
#endif

typedef struct list_head {
  struct list_head *next;
  struct list_head *prev;
} list_head;

void list_add_tail(list_head *node, list_head *head);
void list_del_init(list_head *node);

#ifdef __cplusplus
}
#endif

#endif
