# The Slack look-alike for the reply drafting tests (after gtkapps.cmake, which defines the rule).
glimmo_gtk_app(glimmo-gtk-slack ${CMAKE_CURRENT_LIST_DIR}/gtk-slack/main.c)
