/* lander.h - numbers that all scripts of the game share */
#ifndef LANDER_H
#define LANDER_H

// Keys
#define KEY_ENTER        13
#define KEY_ESC          27
#define KEY_SPACE        32
#define KEY_CURSOR_LEFT  37
#define KEY_CURSOR_UP    38
#define KEY_CURSOR_RIGHT 39
#define KEY_CURSOR_DOWN  40
#define KEY_M            77
#define KEY_P            80
#define KEY_F1           112
#define KEY_F9           120
#define KEY_F12          123

// States of the game
#define STATE_MENU     0
#define STATE_READY    1
#define STATE_FLYING   2
#define STATE_LANDED   3
#define STATE_CRASHED  4
#define STATE_GIVEN_UP 5
#define STATE_SCORES   6

// The ground: 65 points, 25 units apart
#define GROUND_POINTS 65
#define GROUND_STEP   25
#define GROUND_LEFT   -800
#define GROUND_RIGHT  800
#define GROUND_LOW    20
#define GROUND_HIGH   200
#define GROUND_BOTTOM -120
#define PAD_COUNT     3

// The ship; speeds are in units a second
#define START_HEIGHT  440
#define SKY_HEIGHT    620
#define FUEL_LOW      90
#define SAFE_FALL     24
#define SAFE_DRIFT    12
#define SAFE_TILT     10

// Layers on the screen
#define LAYER_CONSOLE 4
#define LAYER_GAUGES  5
#define LAYER_SHADE   9
#define LAYER_TITLE   10

#endif
