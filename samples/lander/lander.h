/* lander.h - numbers that all scripts of the game share */
#ifndef LANDER_H
#define LANDER_H

// Keys
#define KEY_ENTER 13
#define KEY_ESC   27
#define KEY_SPACE 32
#define KEY_LEFT  37
#define KEY_UP    38
#define KEY_RIGHT 39
#define KEY_DOWN  40
#define KEY_M     77
#define KEY_P     80
#define KEY_F1    112
#define KEY_F9    120
#define KEY_F12   123

// States of the game
#define STATE_MENU    0
#define STATE_FLYING  1
#define STATE_LANDED  2
#define STATE_CRASHED 3
#define STATE_SCORES  4

// The moon: 41 points, 25 units apart
#define GROUND_POINTS 41
#define GROUND_STEP   25
#define GROUND_LEFT   -500
#define GROUND_LOW    20
#define GROUND_HIGH   180
#define PAD_COUNT     3

// The ship
#define START_HEIGHT  420
#define FUEL_FULL     500
#define FUEL_LOW      90
#define SAFE_FALL     12
#define SAFE_DRIFT    6
#define SAFE_ROLL     8

// Layers on the screen
#define LAYER_GAUGES 5
#define LAYER_TITLE  10

#endif
