/* What every GTK test application tells the test driving it, one line each on standard output:
 * "ready" once its window is up, and "key <name> <modifiers>" for every key it receives (Shift,
 * Control and Alt as mask bits 1, 4 and 8, the same in GTK 3 and GTK 4). */
#pragma once

#include <gtk/gtk.h>
#include <stdio.h>

#if GTK_MAJOR_VERSION >= 4
#define REPORT_ALT_MASK GDK_ALT_MASK
#else
#define REPORT_ALT_MASK GDK_MOD1_MASK
#endif

static void report_key(guint keyval, guint state) {
    printf("key %s %u\n", gdk_keyval_name(keyval),
           state & (GDK_SHIFT_MASK | GDK_CONTROL_MASK | REPORT_ALT_MASK));
    fflush(stdout);
}

#if GTK_MAJOR_VERSION >= 4
static gboolean on_key(GtkEventControllerKey* controller, guint keyval, guint keycode,
                       GdkModifierType state, gpointer data) {
    (void)controller;
    (void)keycode;
    (void)data;
    report_key(keyval, state);
    return FALSE;
}
#else
static gboolean on_key(GtkWidget* widget, GdkEventKey* event, gpointer data) {
    (void)widget;
    (void)data;
    report_key(event->keyval, event->state);
    return FALSE;
}
#endif

static gboolean announce(gpointer data) {
    (void)data;
    printf("ready\n");
    fflush(stdout);
    return G_SOURCE_REMOVE;
}
