/* What every GTK test application tells the test driving it, one line each on standard output:
 * "ready" once its window is up, and "key <name> <modifiers>" for every key it receives. */
#pragma once

#include <gtk/gtk.h>
#include <stdio.h>

static gboolean on_key(GtkWidget* widget, GdkEventKey* event, gpointer data) {
    (void)widget;
    (void)data;
    printf("key %s %u\n", gdk_keyval_name(event->keyval),
           event->state & (GDK_SHIFT_MASK | GDK_CONTROL_MASK | GDK_MOD1_MASK));
    fflush(stdout);
    return FALSE;
}

static gboolean announce(gpointer data) {
    (void)data;
    printf("ready\n");
    fflush(stdout);
    return G_SOURCE_REMOVE;
}
